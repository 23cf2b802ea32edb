#pragma once

#include "winsupport/clsKelCopyFile.h"

#include <QStringList>

#include <utility>

namespace Quorlin {

/// Writes down the events of a copy object: "begin a>b", "0 a>b", "finished true a>b".
class CopyWatch
{
public:
    explicit CopyWatch(clsKelCopyFile &object)
    {
        const auto files = [](const QString &source, const QString &destination) {
            return QLatin1Char(' ') + source + QLatin1Char('>') + destination;
        };
        QObject::connect(&object, &clsKelCopyFile::FileBegin, &m_context,
                         [=, this](const QString &source, const QString &destination) {
                             events.append(QStringLiteral("begin") + files(source, destination));
                         });
        QObject::connect(
            &object, &clsKelCopyFile::FilePercent, &m_context,
            [=, this](qint16 percent, const QString &source, const QString &destination) {
                events.append(QString::number(percent) + files(source, destination));
            });
        QObject::connect(
            &object, &clsKelCopyFile::FileFinished, &m_context,
            [=, this](bool success, const QString &source, const QString &destination) {
                events.append(
                    (success ? QStringLiteral("finished true") : QStringLiteral("finished false")) +
                    files(source, destination));
            });
    }

    QStringList events;

private:
    QObject m_context;
};

/// Runs `act` once while the system copies for the object: when it raises its second FilePercent,
/// the first of those that come from the system's copy.
template <typename Act>
void duringTheCopy(clsKelCopyFile &object, Act act)
{
    QObject::connect(&object, &clsKelCopyFile::FilePercent, &object,
                     [act = std::move(act), events = 0]() mutable {
                         if (++events == 2)
                             act();
                     });
}

} // namespace Quorlin
