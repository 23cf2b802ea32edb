#include "skin/AppSkin.h"

#include "skin/MetafileCache.h"
#include "skin/OfficeMetafiles.h"
#include "skin/SkinEngine.h"
#include "skin/SvgProcess.h"

#include <QCoreApplication>

#include <memory>

namespace Quorlin::AppSkin {

namespace {

/// The engine behind its cache, as one renderer that owns both.
class Metafiles : public MetafileRenderer
{
public:
    [[nodiscard]] QByteArray render(const QByteArray &content, PictureFormat format) const override
    {
        return m_cache.render(content, format);
    }

private:
    OfficeMetafiles m_engine;
    MetafileCache m_cache{MetafileCache::defaultFolder(), m_engine};
};

std::unique_ptr<SkinEngine> &only()
{
    static std::unique_ptr<SkinEngine> engine;
    return engine;
}

SkinEngine &engine()
{
    Q_ASSERT_X(only(), "AppSkin", "used before Initialise()");
    return *only();
}

} // namespace

void Initialise(const QString &applicationFolder, MessageService &messages, const TextSource &texts)
{
    const auto svg = QCoreApplication::applicationDirPath() + QLatin1String("/quorlin-svg");
    only() = std::make_unique<SkinEngine>(
        applicationFolder, messages, texts,
        PictureLoader(std::make_shared<SvgProcess>(svg), std::make_shared<Metafiles>()));
}

void Finish()
{
    only().reset();
}

void SetWindow(SkinForm form, std::optional<WindowRef> window)
{
    engine().setWindow(form, window);
}

QStringList GetSkinList()
{
    return engine().GetSkinList();
}

void SetSkin(const QString &name)
{
    engine().SetSkin(name);
}

QString GetSkinName()
{
    return engine().GetSkinName();
}

QString GetSkinPath()
{
    return engine().GetSkinPath();
}

void SetDefaultSkin()
{
    engine().SetDefaultSkin();
}

void ApplySkin(qint32 mode)
{
    engine().ApplySkin(mode);
}

void ApplySkinTo(SkinForm form, qint32 mode)
{
    engine().ApplySkinTo(form, mode);
}

SkinLook GetLook()
{
    return engine().GetLook();
}

std::optional<ClickableZone> GetMinimiseZone()
{
    return engine().GetMinimiseZone();
}

} // namespace Quorlin::AppSkin
