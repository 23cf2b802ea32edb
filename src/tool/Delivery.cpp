#include "tool/Delivery.h"

#include "tool/FileNames.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QStorageInfo>

#include <utility>

namespace Quorlin {

namespace {

constexpr qint64 PieceBytes = 1024 * 1024;

/// The bits as they are stored; QFile::WriteUser would tell what root may do.
constexpr QFile::Permissions WriteBits = QFile::WriteOwner | QFile::WriteGroup | QFile::WriteOther;

QString numbered(const QString &path, int number)
{
    if (number < 2)
        return path;
    const auto point = path.lastIndexOf(QLatin1Char('.'));
    const auto end = point > path.lastIndexOf(QLatin1Char('/')) ? point : path.size();
    return path.left(end) + QStringLiteral(" (%1)").arg(number) + path.mid(end);
}

/// The folder itself or the next one above it that is there.
QString nearestExisting(QString folder)
{
    while (!QFileInfo::exists(folder) && QFileInfo(folder).absolutePath() != folder)
        folder = QFileInfo(folder).absolutePath();
    return folder;
}

bool copyBytes(QFile &source, QSaveFile &target)
{
    for (auto piece = source.read(PieceBytes); !piece.isEmpty(); piece = source.read(PieceBytes)) {
        if (target.write(piece) != piece.size())
            return false;
    }
    return source.error() == QFileDevice::NoError;
}

/// Size and time of the last change of an open file; equal ones mean that nobody wrote to it.
std::pair<qint64, QDateTime> versionOf(const QFile &file)
{
    return {file.size(), file.fileTime(QFileDevice::FileModificationTime)};
}

} // namespace

Delivery::Delivery(const QString &folder, const QStringList &inputs) : m_folder(folder)
{
    for (const auto &input : inputs)
        m_inputs.insert(QFileInfo(input).canonicalFilePath());
    m_inputs.remove({});
}

QString Delivery::reserveName(const QString &distillerInput)
{
    const QFileInfo info(distillerInput);
    auto name = info.fileName();
    const auto point = name.lastIndexOf(QLatin1Char('.'));
    if (point >= 0)
        name = name.left(point) + QStringLiteral(".pdf");
    const auto folder = FileNames::fullPath(m_folder.isEmpty() ? info.absolutePath() : m_folder);
    const auto wanted = FileNames::fullPath(name, folder);
    int number = 1;
    while (m_reserved.contains(numbered(wanted, number)) || isInput(numbered(wanted, number)))
        ++number;
    m_reserved.insert(numbered(wanted, number));
    return numbered(wanted, number);
}

bool Delivery::isInput(const QString &path) const
{
    const auto real = QFileInfo(path).canonicalFilePath();
    return !real.isEmpty() && m_inputs.contains(real);
}

Delivery::Outcome Delivery::obstacleAt(const QString &target)
{
    const QFileInfo existing(target);
    if (existing.isDir())
        return {Reason::NotAllowed, QStringLiteral("%1 is a folder").arg(target)};
    if (existing.exists() && !(existing.permissions() & WriteBits))
        return {Reason::NotAllowed, QStringLiteral("%1 is write-protected").arg(target)};
    return obstacleIn(existing.absolutePath());
}

Delivery::Outcome Delivery::obstacleIn(const QString &folder)
{
    const QFileInfo nearest(nearestExisting(QFileInfo(folder).absoluteFilePath()));
    if (nearest.isDir() && nearest.isWritable() && nearest.isExecutable())
        return {};
    const bool isThere = nearest.isDir() && QFileInfo::exists(folder);
    const auto text = isThere ? QStringLiteral("the folder %1 may not be written")
                              : QStringLiteral("the folder %1 cannot be made");
    return {Reason::NotAllowed, text.arg(folder)};
}

Delivery::Outcome Delivery::deliver(const QString &temporary, const QString &target) const
{
    auto outcome = obstacleAt(target);
    const auto folder = QFileInfo(target).absolutePath();
    if (outcome.reason == Reason::None && !QDir().mkpath(folder))
        outcome = {Reason::NotAllowed, QStringLiteral("the folder %1 cannot be made").arg(folder)};
    else if (outcome.reason == Reason::None)
        outcome = copy(temporary, target);
    QFile::remove(temporary);
    return outcome;
}

Delivery::Outcome Delivery::copy(const QString &source, const QString &target) const
{
    QFile from(source);
    if (!from.open(QIODevice::ReadOnly))
        return {Reason::NotFound, QStringLiteral("%1: %2").arg(source, from.errorString())};
    const auto version = versionOf(from);
    QSaveFile to(target);
    const bool copied = to.open(QIODevice::WriteOnly) && copyBytes(from, to);
    // What somebody cut or wrote over meanwhile is not what was made.
    if (copied && versionOf(from) != version)
        return {Reason::EngineFailed,
                QStringLiteral("another program changed %1 before it was delivered").arg(source)};
    if (copied && to.commit())
        return {};
    const auto why = from.error() == QFileDevice::NoError ? to.errorString() : from.errorString();
    const QStorageInfo disk(QFileInfo(target).absolutePath());
    const auto isFull = disk.isValid() && disk.bytesAvailable() < from.size();
    const auto reason = isFull ? Reason::NoRoom : Reason::NotAllowed;
    return {reason, QStringLiteral("%1 cannot be written: %2").arg(target, why)};
}

} // namespace Quorlin
