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
};

constexpr std::array Entries{
    Entry{Reason::None, "none", "no reason"},
    Entry{Reason::UnknownFormat, "unknown-format", "files of this kind cannot be converted"},
    Entry{Reason::NotFound, "not-found", "there is no such file"},
    Entry{Reason::NotRegular, "not-regular", "this is not an ordinary file"},
    Entry{Reason::NotReadable, "not-readable", "the file may not be read"},
    Entry{Reason::Empty, "empty", "the file is empty"},
    Entry{Reason::LockFile, "lock-file", "this only marks a document as open in a program"},
    Entry{Reason::NotPostScript, "not-postscript", "the file is not a PostScript file"},
    Entry{Reason::Protected, "protected", "the document is protected by a password"},
    Entry{Reason::NotPrintable, "not-printable", "its owner does not allow printing"},
    Entry{Reason::Damaged, "damaged", "the document is damaged or not what its name says"},
    Entry{Reason::TookTooLong, "too-long", "it took too long"},
    Entry{Reason::OutOfMemory, "out-of-memory", "it needed too much memory"},
    Entry{Reason::EngineFailed, "engine-failed", "the converter failed on this document"},
    Entry{Reason::ProgramMissing, "program-missing", "a program that is needed is not installed"},
    Entry{Reason::NoRoom, "no-room", "there is no room on the disk"},
    Entry{Reason::NotAllowed, "not-allowed", "no folder for the result may be written"},
    Entry{Reason::BadOptions, "bad-options", "the job-options file is missing or faulty"},
    Entry{Reason::NothingPrinted, "nothing-printed", "the document has no pages"},
    Entry{Reason::Cancelled, "cancelled", "the job ended before"},
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

} // namespace Quorlin
