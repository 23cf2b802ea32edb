#include "skin/SkinError.h"

#include "winsupport/NumberedError.h"

namespace Quorlin::SkinError {

namespace {

constexpr quint32 Overflow = 6;
constexpr quint32 UnknownProperty = 438;

} // namespace

void overflow(const QString &source)
{
    throw NumberedError(Overflow, source, QStringLiteral("Overflow"));
}

void unknownProperty(const QString &source)
{
    throw NumberedError(UnknownProperty, source,
                        QStringLiteral("Object doesn't support this property or method"));
}

} // namespace Quorlin::SkinError
