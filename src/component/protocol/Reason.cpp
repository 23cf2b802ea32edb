#include "component/protocol/Reason.h"

#include <algorithm>
#include <array>

namespace Quorlin {

namespace {

struct Entry
{
    Reason reason;
    const char *key;
    const char *text;
    const char *advice;
};

constexpr std::array Entries{
    Entry{Reason::None, "none", "no reason", ""},
    Entry{Reason::UnknownFormat, "unknown-format", "files of this kind cannot be converted",
          "Save it in a format that is taken, such as ODT, DOCX or PDF."},
    Entry{Reason::NotFound, "not-found", "there is no such file",
          "It was moved, renamed or deleted; convert it from where it is now."},
    Entry{Reason::NotRegular, "not-regular", "this is not an ordinary file",
          "Only files can be converted, no devices and no pipes."},
    Entry{Reason::NotReadable, "not-readable", "the file may not be read",
          "Ask its owner for the right to read it."},
    Entry{Reason::Empty, "empty", "the file is empty",
          "There is nothing to convert; look for another copy of it."},
    Entry{Reason::LockFile, "lock-file", "this file only marks a document as open in a program",
          "Convert the document itself."},
    Entry{Reason::NotPostScript, "not-postscript", "the file is not a PostScript file",
          "Print it to a file again, or give it the extension of what it is."},
    Entry{Reason::Protected, "protected", "the document is protected by a password",
          "Open it in its program, save a copy without a password, and convert the copy."},
    Entry{Reason::NotPrintable, "not-printable", "the document's owner does not allow printing",
          "Ask its owner for a copy that may be printed."},
    Entry{Reason::Damaged, "damaged", "the document is damaged or not what its name says",
          "Open it in its program; if that works, save it under a new name and convert that."},
    Entry{Reason::TookTooLong, "too-long", "it took too long",
          "Convert it alone, or in smaller parts."},
    Entry{Reason::OutOfMemory, "out-of-memory", "it needed too much memory",
          "Convert it in smaller parts, or with smaller pictures."},
    Entry{Reason::EngineFailed, "engine-failed", "the converter failed on this document",
          "Try again; if it fails again, save it in another format and convert that."},
    Entry{Reason::ProgramMissing, "program-missing", "a program that is needed is not installed",
          "Install it, or ask whoever looks after this computer."},
    Entry{Reason::NoRoom, "no-room", "there is no room on the disk",
          "Make room and convert again."},
    Entry{Reason::NotAllowed, "not-allowed", "the result may not be written",
          "Copy the document to a folder where you may write, and convert it there."},
    Entry{Reason::BadOptions, "bad-options", "the job-options file is missing or faulty",
          "Choose another quality, and tell whoever looks after this computer."},
    Entry{Reason::NothingPrinted, "nothing-printed", "the document has no pages",
          "Open it in its program and look whether everything in it is hidden or empty."},
    Entry{Reason::Cancelled, "cancelled", "the conversion was stopped before it was done",
          "Convert it again."},
};

} // namespace

QString reasonKey(Reason reason)
{
    const auto entry = std::ranges::find(Entries, reason, &Entry::reason);
    return QString::fromLatin1(entry == Entries.end() ? "engine-failed" : entry->key);
}

Reason reasonFromKey(const QString &key)
{
    const auto entry = std::ranges::find_if(
        Entries, [&key](const Entry &e) { return key == QLatin1String(e.key); });
    return entry == Entries.end() ? Reason::EngineFailed : entry->reason;
}

QString reasonText(Reason reason)
{
    const auto entry = std::ranges::find(Entries, reason, &Entry::reason);
    return QString::fromLatin1(entry == Entries.end() ? "the converter failed" : entry->text);
}

QString reasonAdvice(Reason reason)
{
    const auto entry = std::ranges::find(Entries, reason, &Entry::reason);
    return QString::fromLatin1(entry == Entries.end() ? "Try again." : entry->advice);
}

QString reasonDetail(Reason reason, const QString &text)
{
    return text == reasonText(reason) ? QString() : text;
}

QList<Reason> allReasons()
{
    QList<Reason> reasons;
    for (const auto &entry : Entries)
        reasons.append(entry.reason);
    std::ranges::sort(reasons);
    return reasons;
}

} // namespace Quorlin
