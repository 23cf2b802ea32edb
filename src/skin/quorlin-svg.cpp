#include "skin/PointReader.h"
#include "skin/SvgCheck.h"

#include <QFile>
#include <QGuiApplication>
#include <QImageReader>
#include <QImageWriter>

using namespace Quorlin;

namespace {

constexpr int FewestArguments = 3;
constexpr int MostArguments = 5;

QByteArray harmlessDrawing(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const auto bytes = file.read(SvgCheck::MostBytes + 1);
    return SvgCheck::isHarmless(bytes) ? bytes : QByteArray();
}

bool render(const QString &in, const QString &out, QSize pixels)
{
    if (harmlessDrawing(in).isEmpty())
        return false;
    QImageReader reader(in, "svg");
    reader.setAutoDetectImageFormat(false);
    if (pixels.isEmpty())
        pixels = reader.size();
    if (!PointReader::isSane(pixels))
        return false;
    reader.setScaledSize(pixels);
    const auto image = reader.read();
    QImageWriter writer(out, "png");
    writer.setCompression(1);
    return !image.isNull() && writer.write(image);
}

} // namespace

/// quorlin-svg IN OUT [WIDTH HEIGHT]: renders one drawing of a skin into a PNG. The exit code is
/// 1 when it cannot be rendered, 2 for wrong use.
int main(int argc, char *argv[])
{
    if (argc != FewestArguments && argc != MostArguments)
        return 2;
    // Nothing is shown: drawings need no screen, only fonts.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    const auto arguments = QGuiApplication::arguments();
    QSize pixels;
    if (arguments.size() == MostArguments)
        pixels = QSize(arguments.at(3).toInt(), arguments.at(4).toInt());
    return render(arguments.at(1), arguments.at(2), pixels) ? 0 : 1;
}
