#include "skin/controls/StoredProperties.h"

#include <QMetaProperty>
#include <QObject>

namespace Quorlin::StoredProperties {

namespace {

/// A colour may have been kept as a negative number.
bool convert(QVariant &value, QMetaType type)
{
    if (type.id() == QMetaType::UInt && value.typeId() == QMetaType::Int)
        value = quint32(value.toInt());
    return value.metaType() == type || value.convert(type);
}

QVariant fitting(const QVariantMap &bag, const QString &name, QMetaType type)
{
    auto value = bag.value(name);
    return value.isValid() && convert(value, type) ? value : QVariant();
}

} // namespace

QStringList names(const QMetaObject &type, int count)
{
    QStringList result;
    const auto first = type.propertyOffset();
    for (int i = first; i < first + count; ++i)
        result.append(QString::fromLatin1(type.property(i).name()));
    return result;
}

void read(QObject &control, const QStringList &names, const QVariantMap &bag,
          const QVariantMap &defaults)
{
    for (const auto &name : names) {
        const auto &type = *control.metaObject();
        const auto property = type.property(type.indexOfProperty(name.toLatin1().constData()));
        auto value = fitting(bag, name, property.metaType());
        if (!value.isValid())
            value = fitting(defaults, name, property.metaType());
        property.write(&control, value.isValid() ? value : QVariant(property.metaType()));
    }
}

QVariantMap write(const QObject &control, const QStringList &names)
{
    QVariantMap bag;
    for (const auto &name : names)
        bag.insert(name, control.property(name.toLatin1().constData()));
    return bag;
}

} // namespace Quorlin::StoredProperties
