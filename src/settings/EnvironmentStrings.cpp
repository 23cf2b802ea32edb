#include "settings/EnvironmentStrings.h"

namespace Quorlin::EnvironmentStrings {

std::optional<QString> ofProcess(const QString &name)
{
    const auto bytes = name.toLocal8Bit();
    if (!qEnvironmentVariableIsSet(bytes.constData()))
        return {};
    return qEnvironmentVariable(bytes.constData());
}

QString expand(const QString &text, const Lookup &lookup)
{
    constexpr QLatin1Char percent('%');
    QString expanded;
    qsizetype from = 0;
    for (auto start = text.indexOf(percent); start >= 0; start = text.indexOf(percent, from)) {
        const auto end = text.indexOf(percent, start + 1);
        if (end < 0)
            break;
        const auto name = text.mid(start + 1, end - start - 1);
        const auto value = name.isEmpty() ? std::nullopt : lookup(name);
        expanded += text.mid(from, start - from) + value.value_or(QString(percent + name));
        // The second "%" of an unknown name may be the first of a known one.
        from = value ? end + 1 : end;
    }
    return expanded + text.mid(from);
}

} // namespace Quorlin::EnvironmentStrings
