#include "fuzz/FuzzSupport.h"
#include "fuzz/FuzzTarget.h"

#include "component/backends/office/EncryptedPackage.h"
#include "component/backends/office/ExportedPdf.h"
#include "component/backends/office/NameCheck.h"
#include "component/protocol/Acceptance.h"
#include "component/supervisor/PdfFile.h"

#include <QFileInfo>
#include <QTemporaryDir>

using namespace Quorlin;
using Fuzz::check;

namespace {

/// A file in a folder of its own, whose name comes from the input's first line.
class Scene
{
public:
    /// @return an empty path when no file can have this name.
    [[nodiscard]] QString write(std::string_view name, std::string_view content) const
    {
        const auto text = QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size()));
        const bool possible = !text.isEmpty() && text.toUtf8().size() <= 255 &&
                              !text.contains(QLatin1Char('/')) && !text.contains(QChar(0)) &&
                              text != QLatin1String(".") && text != QLatin1String("..");
        if (!possible)
            return {};
        // Joined by hand: a name that begins with a colon is no resource of the program.
        auto path = m_folder.path() + QLatin1Char('/') + text;
        Fuzz::writeFile(path, content);
        return path;
    }

private:
    QTemporaryDir m_folder;
};

void checkAcceptance(const QString &path, std::string_view content)
{
    const auto entrance = Acceptance::entranceOf(path);
    const auto extension = QFileInfo(path).suffix().toLower();
    const bool isListed = Acceptance::extensions(Family::All).contains(extension);
    check((entrance != Entrance::None) == isListed);
    const bool isPostScript = content.starts_with("%!") || content.starts_with("\xC5\xD0\xD3\xC6");
    auto expected = content.empty() ? Reason::Empty : Reason::None;
    if (expected == Reason::None && entrance == Entrance::PostScript && !isPostScript)
        expected = Reason::NotPostScript;
    if (QFileInfo(path).fileName().startsWith(QLatin1String("~$")))
        expected = Reason::LockFile;
    if (entrance == Entrance::None)
        expected = Reason::UnknownFormat;
    check(Acceptance::refusalOf(path) == expected);
}

void checkContainer(const QString &path, std::string_view content)
{
    using namespace std::string_view_literals;
    constexpr auto Name = "E\0n\0c\0r\0y\0p\0t\0e\0d\0P\0a\0c\0k\0a\0g\0e\0\0\0"sv;
    check(!isEncryptedPackage(path) || (content.starts_with("\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1") &&
                                        content.find(Name) != std::string_view::npos));
}

void checkPdf(const QString &path, std::string_view content)
{
    const auto exported = ExportedPdf::look(path);
    check(exported.pages >= -1 && exported.pages < 100'000'000);
    check(!exported.whole ||
          (content.starts_with("%PDF-") && content.find("%%EOF") != std::string_view::npos));
    check(!PdfFile::looksWhole(path) || content.starts_with("%PDF-"));
}

/// Only the beginning of a file is looked at, and plain text is never judged.
void checkName(const QString &path, std::string_view content)
{
    constexpr std::size_t Head = 4096;
    const bool contradicts = contradictsItsName(path);
    const auto extension = QFileInfo(path).suffix().toLower();
    check(!contradicts || (extension != QLatin1String("txt") && extension != QLatin1String("csv")));
    Fuzz::writeFile(path, content.substr(0, Head));
    check(contradictsItsName(path) == contradicts);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const Scene scene;
    const Fuzz::Halves parts(Fuzz::textOf(data, size), "\n");
    const auto path = scene.write(parts.first, parts.second);
    if (path.isEmpty())
        return 0;
    checkAcceptance(path, parts.second);
    checkContainer(path, parts.second);
    checkPdf(path, parts.second);
    checkName(path, parts.second);
    check(QFile::remove(path));
    return 0;
}
