#include "component/protocol/Acceptance.h"

#include <QFile>
#include <QFileInfo>

namespace Quorlin::Acceptance {

namespace {

QStringList list(const char *words)
{
    return QString::fromLatin1(words).split(QLatin1Char(' '));
}

const QStringList &pictures()
{
    static const auto names = list("png jpg jpeg gif bmp tif tiff svg wmf emf odg otg fodg");
    return names;
}

const QStringList &postScript()
{
    static const auto names = list("ps eps prn");
    return names;
}

/// "~$report.docx", which an office program leaves beside an open "report.docx".
bool isLockFile(const QFileInfo &file)
{
    return file.fileName().startsWith(QLatin1String("~$"));
}

bool beginsLikePostScript(const QByteArray &head)
{
    static const QByteArray binaryEpsMark("\xC5\xD0\xD3\xC6", 4);
    return head.startsWith("%!") || head.startsWith(binaryEpsMark);
}

} // namespace

const QStringList &extensions(Family family)
{
    static const auto word =
        list("doc docx docm dot dotx dotm rtf odt ott fodt sxw txt html htm xhtml wpd");
    static const auto excel = list("xls xlsx xlsm xlsb xlt xltx xltm ods ots fods sxc csv");
    static const auto powerPoint =
        list("ppt pptx pptm pps ppsx ppsm pot potx potm odp otp fodp sxi");
    static const auto pdf = list("pdf");
    static const auto all = word + excel + powerPoint + pdf + pictures() + postScript();
    switch (family) {
    case Family::Word:
        return word;
    case Family::Excel:
        return excel;
    case Family::PowerPoint:
        return powerPoint;
    case Family::Pdf:
        return pdf;
    case Family::All:
        break;
    }
    return all;
}

Entrance entranceOf(const QString &fileName)
{
    const auto extension = QFileInfo(fileName).suffix().toLower();
    if (postScript().contains(extension))
        return Entrance::PostScript;
    if (extensions(Family::Pdf).contains(extension))
        return Entrance::Pdf;
    return extensions(Family::All).contains(extension) ? Entrance::Office : Entrance::None;
}

Reason refusalOf(const QString &filePath)
{
    const QFileInfo info(filePath);
    if (!info.exists())
        return Reason::NotFound;
    if (!info.isFile())
        return Reason::NotRegular;
    const auto entrance = entranceOf(filePath);
    if (entrance == Entrance::None)
        return Reason::UnknownFormat;
    if (isLockFile(info))
        return Reason::LockFile;
    if (info.size() == 0)
        return Reason::Empty;
    QFile file(filePath);
    if (!file.open(QIODevice::ReadOnly))
        return Reason::NotReadable;
    if (entrance == Entrance::PostScript && !beginsLikePostScript(file.read(4)))
        return Reason::NotPostScript;
    return Reason::None;
}

} // namespace Quorlin::Acceptance
