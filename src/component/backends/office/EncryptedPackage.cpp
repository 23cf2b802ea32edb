#include "component/backends/office/EncryptedPackage.h"

#include <QByteArrayView>
#include <QFile>

namespace Quorlin {

namespace {

constexpr char CompoundMark[] = "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1";
constexpr qint64 EntrySize = 128;

/// The first bytes of a directory entry: the stream's name in UTF-16LE.
QByteArray entryName()
{
    const QByteArray name("EncryptedPackage");
    QByteArray bytes;
    for (const char letter : name)
        bytes.append(letter).append('\0');
    return bytes.append(2, '\0');
}

} // namespace

bool isEncryptedPackage(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly) || file.peek(8) != QByteArray(CompoundMark, 8))
        return false;
    const auto *bytes = file.map(0, file.size());
    if (!bytes)
        return false;
    // Directory entries stand at multiples of their size; following the chain of sectors would
    // add nothing but ways to be led astray.
    const auto name = entryName();
    for (qint64 at = 4 * EntrySize; at + EntrySize <= file.size(); at += EntrySize) {
        if (QByteArrayView(bytes + at, name.size()) == name)
            return true;
    }
    return false;
}

} // namespace Quorlin
