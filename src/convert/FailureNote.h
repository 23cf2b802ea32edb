#pragma once

#include "component/protocol/Reason.h"

#include <QList>
#include <QString>

namespace Quorlin {

class ReasonTexts;

/// A document without a result.
struct FailedDocument
{
    QString file; ///< full path of the user's document
    Reason reason = Reason::EngineFailed;
    QString detail; ///< in English, what is known beyond the reason; mostly empty
};

/// Tells users why documents failed, in lines that a message box has room for.
namespace FailureNote {

/// So many documents are named.
inline constexpr qsizetype MostNamed = 5;

/// Of a document that the message names already: what happened, what to do, and the detail.
[[nodiscard]] QString ofOne(const FailedDocument &document, const ReasonTexts &texts);

/// Of any number of documents, each with its file's name; empty without documents. What to do is
/// told where it is the same for all.
[[nodiscard]] QString ofAll(const QList<FailedDocument> &documents, const ReasonTexts &texts);

} // namespace FailureNote

} // namespace Quorlin
