#include "fuzz/FuzzTarget.h"

#include "skin/MetafileRenderer.h"
#include "skin/SkinEngine.h"
#include "skin/SkinTarget.h"
#include "skin/SvgRenderer.h"
#include "winsupport/MessageService.h"
#include "winsupport/TextSource.h"

#include <QDir>
#include <QPainter>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdlib>

using namespace Quorlin;

namespace {

/// What lies behind this byte is the content of the skin's pictures.
constexpr std::uint8_t EndOfDescription = 1;

void check(bool holds)
{
    if (!holds)
        std::abort();
}

/// No engine of another process takes part.
class PlainDrawings : public SvgRenderer
{
public:
    [[nodiscard]] QImage render(const QByteArray & /*svg*/, const QSize &pixels,
                                Waiting /*waiting*/) const override
    {
        QImage image(pixels.isEmpty() ? QSize(4, 4) : pixels, QImage::Format_RGB32);
        image.fill(Qt::gray);
        return image;
    }
};

/// Takes what follows the first four bytes, a metafile's mark, for the PNG.
class PlainMetafiles : public MetafileRenderer
{
public:
    [[nodiscard]] QByteArray render(const QByteArray &content,
                                    PictureFormat /*format*/) const override
    {
        return content.mid(4);
    }
};

class CountedMessages : public MessageService
{
public:
    void show(const QString & /*text*/, MessageStyle style, const QString & /*title*/) override
    {
        check(style == MessageStyle::Plain);
        ++count;
    }

    int count = 0;
};

class NoTexts : public TextSource
{
public:
    [[nodiscard]] QString text(const QString &key) const override { return key; }
};

/// A window that takes everything and draws its picture.
class TakingWindow : public SkinWindow
{
public:
    [[nodiscard]] SkinTarget *find(QLatin1StringView /*objectName*/) override { return &m_target; }

    [[nodiscard]] bool setSize(const QSize & /*pixels*/) override
    {
        ++sizes;
        return true;
    }

    [[nodiscard]] bool setPicture(const SkinPicture &picture) override
    {
        QImage canvas(16, 16, QImage::Format_RGB32);
        canvas.setDevicePixelRatio(2);
        QPainter painter(&canvas);
        picture.draw(painter, QRectF(0, 0, 8, 8));
        return true;
    }

    int sizes = 0;

private:
    class Target : public SkinTarget
    {
        [[nodiscard]] bool set(QLatin1StringView property, const QVariant &value) override
        {
            return value.isValid() && !property.isEmpty();
        }
    };

    Target m_target;
};

/// An application folder with the skin "Blue".
class Scene
{
public:
    Scene()
        : m_engine(
              m_folder.path(), m_messages, m_texts,
              PictureLoader(std::make_shared<PlainDrawings>(), std::make_shared<PlainMetafiles>()))
    {
        check(QDir(m_folder.path()).mkpath(QStringLiteral("skins/Blue")));
        m_engine.setWindow(SkinForm::Main, WindowRef(m_main));
        m_engine.setWindow(SkinForm::About, WindowRef(m_about));
    }

    void write(const char *name, const std::uint8_t *from, const std::uint8_t *to) const
    {
        QFile file(m_folder.filePath(QLatin1String("skins/Blue/") + QLatin1String(name)));
        check(file.open(QIODevice::WriteOnly) &&
              file.write(reinterpret_cast<const char *>(from), to - from) == to - from);
    }

    void loadAndCheck()
    {
        m_messages.count = 0;
        const auto sizes = m_main.sizes;
        m_engine.SetSkin(QStringLiteral("Blue"));
        check(m_main.sizes == sizes + 1 && m_about.sizes == m_main.sizes);
        if (m_engine.GetSkinName() == QStringLiteral("Blue"))
            checkLoaded();
        else
            checkBuiltIn(1);
        m_engine.ApplySkin(1);
        m_messages.count = 0;
        m_engine.SetSkin({});
        checkBuiltIn(0);
    }

private:
    void checkLoaded()
    {
        check(m_messages.count == 0);
        for (const auto &element : SkinElement::all()) {
            if (m_engine.isTextMode() && element.skippedInTextMode)
                continue;
            if (const auto *const form = m_engine.objects().form(element.name))
                check(form->width(0) != 0 && form->height(0) != 0 && !form->picture(0).isEmpty());
            else if (const auto *const control = m_engine.objects().control(element.name))
                check(control->X(0) != 0 && control->Y(0) != 0 && control->width(0) != 0 &&
                      control->height(0) != 0);
        }
        const auto look = m_engine.GetLook();
        for (const auto size : {look.fontSize(), look.titleFontSize(), look.convertFontSize()})
            check(size >= SkinLook::SmallestFont && size <= SkinLook::LargestFont);
        const auto zone = m_engine.GetMinimiseZone();
        check(!zone || (zone->left(0) != 0 && zone->left(0) != zone->right(0)));
    }

    void checkBuiltIn(int messages)
    {
        check(m_messages.count == messages && m_engine.GetSkinName() == QStringLiteral("None"));
        check(m_engine.GetSkinPath().isEmpty() && !m_engine.isTextMode());
        check(m_engine.GetLook() == SkinLook());
        for (const auto &element : SkinElement::all()) {
            const auto &place = element.builtIn;
            if (const auto *const form = m_engine.objects().form(element.name))
                check(form->width(0) == place.width && form->height(0) == place.height &&
                      form->picture(0).isEmpty());
            else if (const auto *const control = m_engine.objects().control(element.name))
                check(control->X(0) == place.x && control->Y(0) == place.y &&
                      control->width(0) == place.width && control->height(0) == place.height &&
                      control->visible(0) == place.visible);
        }
    }

    QTemporaryDir m_folder;
    CountedMessages m_messages;
    NoTexts m_texts;
    TakingWindow m_main;
    TakingWindow m_about;
    SkinEngine m_engine;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static Scene scene;
    const auto *const end = data + size;
    const auto *const split = std::find(data, end, EndOfDescription);
    const auto *const pictures = split == end ? end : split + 1;
    scene.write("Info.ssk", data, split);
    scene.write("p.png", pictures, end);
    scene.write("p@2x.png", pictures, end);
    scene.loadAndCheck();
    return 0;
}
