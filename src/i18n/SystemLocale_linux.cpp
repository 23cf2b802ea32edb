#include "i18n/SystemLocale.h"

#include "i18n/LocaleTable.h"

namespace Quorlin {

namespace {

constexpr int BufferSize = 16;

QByteArray localeName()
{
    for (const auto *const variable : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        auto name = qgetenv(variable);
        if (!name.isEmpty())
            return name;
    }
    return {};
}

class LinuxLocale : public SystemLocale
{
public:
    [[nodiscard]] quint32 threadLocale() const override
    {
        return LocaleTable::identifier(localeName());
    }

    [[nodiscard]] QByteArray defaultAnsiCodePage(quint32 locale) const override
    {
        const auto page = LocaleTable::ansiCodePage(locale);
        return page ? QByteArray::number(*page).leftJustified(BufferSize, '\0') : QByteArray();
    }
};

} // namespace

const SystemLocale &SystemLocale::current()
{
    static const LinuxLocale locale;
    return locale;
}

} // namespace Quorlin
