#pragma once

#include "skin/SkinPicture.h"
#include "skin/SkinTarget.h"
#include "skin/SkinWindow.h"

#include <QHash>
#include <QMap>
#include <QSet>
#include <QStringList>

namespace Quorlin {

/// A window that writes down what a skin does to it: "CONTROL.PROPERTY=VALUE", in order, with
/// "window" for itself and the size of a picture for the picture.
class RecordedWindow : public SkinWindow
{
public:
    [[nodiscard]] SkinTarget *find(QLatin1StringView objectName) override;
    [[nodiscard]] bool setSize(const QSize &pixels) override;
    [[nodiscard]] bool setPicture(const SkinPicture &picture) override;

    [[nodiscard]] const QStringList &record() const { return m_record; }
    void clear() { m_record.clear(); }
    /// What was done to one control.
    [[nodiscard]] QStringList recordOf(const QString &control) const;
    /// The controls that something was done to, each run told once, in order.
    [[nodiscard]] QStringList order() const;

    /// From now on a property is refused: "CONTROL.PROPERTY".
    void refuse(const QString &property) { m_refused.insert(property); }
    /// From now on there is no such control.
    void remove(const QString &control) { m_missing.insert(control); }

private:
    class Target : public SkinTarget
    {
    public:
        RecordedWindow *window = nullptr;
        QString name;
        [[nodiscard]] bool set(QLatin1StringView property, const QVariant &value) override;
    };

    [[nodiscard]] bool note(const QString &property, const QString &value);

    Target m_target;
    QStringList m_record;
    QSet<QString> m_refused;
    QSet<QString> m_missing;
};

} // namespace Quorlin
