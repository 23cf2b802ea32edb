#include "i18n/AppTextSource.h"

#include "i18n/AppText.h"

namespace Quorlin {

QString AppTextSource::text(const QString &key) const
{
    return AppText::GetText(key);
}

} // namespace Quorlin
