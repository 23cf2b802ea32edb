#include "component/supervisor/BringIn.h"

#include "component/protocol/Acceptance.h"
#include "component/supervisor/ExclusiveFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>

namespace Quorlin::BringIn {

namespace {

/// A copy can fail on either side.
Reason reasonOf(ExclusiveFile::Result result, const QString &from, const QString &to)
{
    const QFileInfo info(from);
    switch (result) {
    case ExclusiveFile::Result::Done:
        return Reason::None;
    case ExclusiveFile::Result::NoRoom:
        return Reason::NoRoom;
    case ExclusiveFile::Result::NotAllowed:
        return info.isReadable() ? Reason::NotAllowed : Reason::NotReadable;
    default:
        if (!info.exists())
            return Reason::NotFound;
        if (!QFileInfo(to).dir().exists())
            return Reason::EngineFailed;
        return info.isFile() ? Reason::NotReadable : Reason::NotRegular;
    }
}

} // namespace

Reason document(const QString &from, const QString &to)
{
    const auto refusal = Acceptance::refusalOf(from);
    return refusal == Reason::None ? file(from, to) : refusal;
}

Reason file(const QString &from, const QString &to)
{
    return reasonOf(ExclusiveFile::copy(from, to), from, to);
}

Reason linkedFile(const QString &from, const QString &to)
{
    return reasonOf(ExclusiveFile::publish(from, to, [] {}), from, to);
}

QString safeName(const QString &fileName)
{
    constexpr qsizetype MostBytes = 200;
    const bool printable =
        std::ranges::all_of(fileName, [](QChar c) { return c.isPrint() || c.isSurrogate(); });
    return printable && fileName.toUtf8().size() <= MostBytes ? fileName : plainName(fileName);
}

QString plainName(const QString &fileName)
{
    return QStringLiteral("document.") + QFileInfo(fileName).suffix().toLower();
}

} // namespace Quorlin::BringIn
