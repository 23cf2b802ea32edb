#pragma once

#include <QStringList>
#include <QVariantMap>

namespace Quorlin {

/// The properties of a control that a form keeps: the first ones that its own class declares.
namespace StoredProperties {

/// Their names, in the order in which they are kept.
[[nodiscard]] QStringList names(const QMetaObject &type, int count);

/// Sets each of them in order; one that is not in the bag, or of another kind, is taken from
/// the defaults, and is empty (0, an empty text, false) when it has none there.
void read(QObject &control, const QStringList &names, const QVariantMap &bag,
          const QVariantMap &defaults = {});

[[nodiscard]] QVariantMap write(const QObject &control, const QStringList &names);

} // namespace StoredProperties

} // namespace Quorlin
