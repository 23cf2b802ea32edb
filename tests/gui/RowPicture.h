#pragma once

#include <QTest>
#include <QWidget>

namespace Quorlin {

/// Keeps a picture for people to look at: one for each row of a test with the columns "skin" and
/// "language", each kind and each scale.
inline void keepRowPicture(QWidget &window, const QString &kind)
{
    QFETCH(QString, skin);
    QFETCH(QString, language);
    const auto file = QStringLiteral("%1/%2 %3 %4 %5x.png")
                          .arg(QStringLiteral(QUORLIN_PICTURES), skin, language, kind)
                          .arg(window.devicePixelRatioF());
    QVERIFY2(window.grab().save(file), qPrintable(file));
}

} // namespace Quorlin
