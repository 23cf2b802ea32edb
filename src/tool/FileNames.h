#pragma once

#include <QByteArrayView>
#include <QDir>
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

/// The full path of a name that counts from this folder, cleaned. One that begins with ":" is a
/// name like any other, and no resource of the program.
[[nodiscard]] QString fullPath(const QString &name, const QString &folder = QDir::currentPath());

} // namespace FileNames

} // namespace Quorlin
