#pragma once

#include <QList>
#include <QString>
#include <QStringList>

namespace Quorlin {

class TextSource;

/// The choice of file types in a dialog, in the form "description|*.a;*.b|description|*.c".
namespace DocumentFilter {

/// One entry for each family of documents, the one of all documents first.
[[nodiscard]] QString text(const TextSource &texts);

/// The same for other lists of extensions, in the order of the families; a family without
/// extensions has no entry.
[[nodiscard]] QString text(const TextSource &texts, const QList<QStringList> &extensions);

/// The entries of a filter in the form "description (*.a *.b)". One without patterns shows
/// all files.
[[nodiscard]] QStringList toolkitFilters(const QString &filter);

} // namespace DocumentFilter

} // namespace Quorlin
