#include "winsupport/mdlKelCopyFile.h"

#include "winsupport/clsKelCopyFile.h"

#include <QCoreApplication>
#include <QHash>
#include <QPointer>

namespace Quorlin {

namespace {

struct RunningCopies
{
    QHash<QString, QPointer<clsKelCopyFile>> objects;
    qint32 counter = 0;
};

RunningCopies &running()
{
    static RunningCopies copies;
    return copies;
}

QString keyOf(qint32 number)
{
    return QString::number(number) + QLatin1Char('K');
}

} // namespace

qint32 mdlKelCopyFile::add(clsKelCopyFile &object)
{
    auto &copies = running();
    copies.counter = copies.objects.isEmpty() ? 1 : copies.counter + 1;
    copies.objects.insert(keyOf(copies.counter), &object);
    return copies.counter;
}

void mdlKelCopyFile::remove(qint32 number)
{
    running().objects.remove(keyOf(number));
}

quint32 mdlKelCopyFile::CopyProgressRoutine(qint64 total, qint64 copied, qint32 number)
{
    QCoreApplication::processEvents();
    if (const auto object = running().objects.value(keyOf(number)))
        object->CopyProgress(total, copied);
    return 0;
}

qint16 mdlKelCopyFile::percentOf(qint64 total, qint64 copied)
{
    const auto whole = copied * 100 / total;
    const auto twice = copied * 100 % total * 2;
    const bool up = twice > total || (twice == total && whole % 2 != 0);
    return static_cast<qint16>(up ? whole + 1 : whole);
}

} // namespace Quorlin
