#pragma once

#include <QList>
#include <QMetaType>
#include <QString>

namespace Quorlin {

/// Why a document was refused or failed. The numbers are the refusal codes that the window
/// sees; 42 is fixed by the component's contract, the others are ours.
enum class Reason {
    None = 0,
    UnknownFormat = 1,   ///< the extension belongs to no family
    NotFound = 2,        ///< no such file, or it vanished
    NotRegular = 3,      ///< a folder, device, socket or pipe
    NotReadable = 4,     ///< no permission to read it
    Empty = 5,           ///< no bytes in it
    LockFile = 6,        ///< what an office program leaves beside an open document
    NotPostScript = 42,  ///< a PostScript name without PostScript inside
    Protected = 50,      ///< a password is needed
    NotPrintable = 51,   ///< its owner does not allow printing
    Damaged = 52,        ///< the format is known, but the content cannot be read
    TookTooLong = 53,    ///< no progress for a while, or over the upper limit
    OutOfMemory = 54,    ///< a worker needed more memory than it may have
    EngineFailed = 55,   ///< a worker ended or answered nonsense, more than once
    ProgramMissing = 56, ///< a program that the step needs is not installed
    NoRoom = 57,         ///< the disk is full
    NotAllowed = 58,     ///< no folder may be written
    BadOptions = 59,     ///< the job-options file is missing or faulty
    NothingPrinted = 60, ///< the document has no pages
    Cancelled = 61,      ///< the job ended before the document's turn
};

/// The short word for a reason on the pipe and in reports, such as "protected".
[[nodiscard]] QString reasonKey(Reason reason);

/// The reason of such a word; EngineFailed for a word that nobody knows.
[[nodiscard]] Reason reasonFromKey(const QString &key);

/// A sentence for people, in English, without a full stop.
[[nodiscard]] QString reasonText(Reason reason);

/// What a user can do about it: whole sentences in English; empty for None.
[[nodiscard]] QString reasonAdvice(Reason reason);

/// What a text on the pipe says beyond the reason's own sentence; empty when that is nothing.
[[nodiscard]] QString reasonDetail(Reason reason, const QString &text);

/// Every reason once, None too, by their numbers.
[[nodiscard]] QList<Reason> allReasons();

} // namespace Quorlin

Q_DECLARE_METATYPE(Quorlin::Reason)
