#pragma once

#include <QByteArrayView>
#include <QString>

namespace Quorlin {

/// Names of files as the system gives them. They may hold any bytes; only those in UTF-8 can be
/// asked for and told to the component. The others are kept apart, so that no other file is
/// taken for one of them.
namespace FileNames {

/// A name from its bytes. Of one that is not UTF-8 every byte over 127 becomes half of a
/// surrogate pair, which no name in UTF-8 gives.
[[nodiscard]] QString fromBytes(QByteArrayView bytes);

/// Whether the bytes of the name were UTF-8.
[[nodiscard]] bool isUtf8(const QString &name);

/// The name as it can be shown and written: U+FFFD for what is not UTF-8.
[[nodiscard]] QString legible(QString name);

} // namespace FileNames

} // namespace Quorlin
