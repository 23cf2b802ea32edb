#include "ui/mdlPartner.h"

#include "convert/mdlOpenFile.h"
#include "i18n/LanguageName.h"
#include "settings/IniFile.h"

#include <QUrl>

#include <algorithm>
#include <array>

namespace Quorlin::mdlPartner {

namespace {

struct Link
{
    QString language;
    QString address;
};

using LinkTable = QList<Link>;

struct LinkTables
{
    LinkTable adobe;
    LinkTable maker;
    LinkTable product;
};

LinkTables &tables()
{
    static LinkTables all;
    return all;
}

/// For which language which setting counts.
struct LinkRow
{
    QStringView language;
    QLatin1StringView adobe;
    QLatin1StringView maker;
    QLatin1StringView product;
};

constexpr QLatin1StringView AdobeInternational("AdobeInternational");
constexpr QLatin1StringView MakerEnglish("MakerEnglish");
constexpr QLatin1StringView ProductHome("ProductHome");

constexpr std::array LinkRows{
    LinkRow{u"default", AdobeInternational, MakerEnglish, ProductHome},
    LinkRow{LanguageName::French, QLatin1StringView("AdobeFrench"), QLatin1StringView("MakerHome"),
            QLatin1StringView("ProductFrench")},
    LinkRow{LanguageName::English, AdobeInternational, MakerEnglish, ProductHome},
    LinkRow{LanguageName::German, QLatin1StringView("AdobeGerman"), MakerEnglish, ProductHome},
};

QString addressIn(const LinkTable &table, const QString &language)
{
    const auto found = std::ranges::find(table, language, &Link::language);
    return found == table.end() ? QString() : found->address;
}

bool isWebAddress(const QString &address)
{
    const QUrl url(address, QUrl::StrictMode);
    const auto scheme = url.scheme();
    return url.isValid() && !url.host().isEmpty() &&
           (scheme == QLatin1String("http") || scheme == QLatin1String("https"));
}

} // namespace

void InitWebLinks(const QString &programFolder)
{
    IniFile file;
    if (file.Load(programFolder + QStringLiteral("/Quorlin.ini")) != 0)
        file = IniFile();
    const auto address = [&file](QLatin1StringView setting) {
        return file.GetVar(setting, QStringLiteral("WebLinks"));
    };
    tables() = {};
    for (const auto &row : LinkRows) {
        const auto language = row.language.toString();
        tables().adobe.append({language, address(row.adobe)});
        tables().maker.append({language, address(row.maker)});
        tables().product.append({language, address(row.product)});
    }
}

QString GetAdobeLink(const QString &language)
{
    return addressIn(tables().adobe, language);
}

QString GetProductLink(const QString &language)
{
    return addressIn(tables().product, language);
}

QString GetMakerLink(const QString &language)
{
    return addressIn(tables().maker, language);
}

void OpenLink(const QString &address)
{
    if (isWebAddress(address))
        mdlOpenFile::ShellOpenAddress(address);
}

} // namespace Quorlin::mdlPartner
