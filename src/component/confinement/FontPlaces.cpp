#include "component/confinement/FontPlaces.h"

#include <QDir>
#include <QFile>

#include <fontconfig/fontconfig.h>

#include <memory>

namespace Quorlin::FontPlaces {

namespace {

QStringList texts(FcStrList *list)
{
    QStringList result;
    if (list == nullptr)
        return result;
    while (const auto *text = FcStrListNext(list))
        result << QFile::decodeName(reinterpret_cast<const char *>(text));
    FcStrListDone(list);
    return result;
}

/// A folder named for fonts is not to open a whole home, all homes or a whole disk.
bool isTooMuch(const QString &path)
{
    const auto clean = QDir::cleanPath(path);
    const auto inside = clean == QDir::rootPath() ? clean : clean + QLatin1Char('/');
    return !QDir::isAbsolutePath(clean) || (QDir::homePath() + QLatin1Char('/')).startsWith(inside);
}

QStringList find()
{
    const std::unique_ptr<FcConfig, decltype(&FcConfigDestroy)> config(FcInitLoadConfig(),
                                                                       FcConfigDestroy);
    if (!config)
        return {};
    auto places =
        texts(FcConfigGetConfigFiles(config.get())) + texts(FcConfigGetFontDirs(config.get())) +
        texts(FcConfigGetConfigDirs(config.get())) + texts(FcConfigGetCacheDirs(config.get()));
    // The folder with all settings, which the list of files names one by one only if they exist.
    places << QStringLiteral("/etc/fonts");
    places.removeIf(isTooMuch);
    places.removeDuplicates();
    return places;
}

} // namespace

QStringList readable()
{
    static const QStringList places = find();
    return places;
}

} // namespace Quorlin::FontPlaces
