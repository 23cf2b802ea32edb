#include "skin/OfficeMetafiles.h"

#include "skin/MetafileSize.h"
#include "skin/PointReader.h"
#include "skin/TimedProcess.h"

#include <QFile>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QUrl>

namespace Quorlin {

namespace {

// WIDTH, HEIGHT and CONTENT are filled in.
constexpr const char *Page = R"(<?xml version="1.0" encoding="UTF-8"?>
<office:document office:version="1.3"
    office:mimetype="application/vnd.oasis.opendocument.graphics"
    xmlns:office="urn:oasis:names:tc:opendocument:xmlns:office:1.0"
    xmlns:style="urn:oasis:names:tc:opendocument:xmlns:style:1.0"
    xmlns:draw="urn:oasis:names:tc:opendocument:xmlns:drawing:1.0"
    xmlns:fo="urn:oasis:names:tc:opendocument:xmlns:xsl-fo-compatible:1.0"
    xmlns:svg="urn:oasis:names:tc:opendocument:xmlns:svg-compatible:1.0">
  <office:styles/>
  <office:automatic-styles>
    <style:page-layout style:name="Layout">
      <style:page-layout-properties fo:page-width="WIDTH" fo:page-height="HEIGHT"
          fo:margin-top="0in" fo:margin-bottom="0in" fo:margin-left="0in" fo:margin-right="0in"/>
    </style:page-layout>
    <style:style style:name="Page" style:family="drawing-page"/>
  </office:automatic-styles>
  <office:master-styles>
    <style:master-page style:name="Master" style:page-layout-name="Layout" draw:style-name="Page"/>
  </office:master-styles>
  <office:body><office:drawing><draw:page draw:master-page-name="Master">
    <draw:frame svg:x="0in" svg:y="0in" svg:width="WIDTH" svg:height="HEIGHT">
      <draw:image><office:binary-data>CONTENT</office:binary-data></draw:image>
    </draw:frame>
  </draw:page></office:drawing></office:body>
</office:document>
)";

/// A drawing of one page that the metafile fills: opened alone, it would lie on a sheet of paper.
QByteArray pageAround(const QByteArray &metafile, const QSizeF &inches)
{
    const auto text = [](double length) { return QByteArray::number(length, 'f', 4) + "in"; };
    QByteArray page(Page);
    page.replace("WIDTH", text(inches.width()));
    page.replace("HEIGHT", text(inches.height()));
    return page.replace("CONTENT", metafile.toBase64());
}

} // namespace

OfficeMetafiles::OfficeMetafiles(const QString &program, std::chrono::milliseconds limit)
    : m_program(program), m_limit(limit)
{
}

QByteArray OfficeMetafiles::render(const QByteArray &content, PictureFormat format) const
{
    const auto program =
        m_program.isEmpty() ? QStandardPaths::findExecutable(QStringLiteral("soffice")) : m_program;
    const QTemporaryDir folder;
    const auto inches = metafileInches(content, format);
    QFile in(folder.filePath(QStringLiteral("picture.fodg")));
    if (program.isEmpty() || inches.isEmpty() || !in.open(QIODevice::WriteOnly))
        return {};
    const auto page = pageAround(content, inches);
    if (in.write(page) != page.size() || !in.flush())
        return {};
    const auto profile = QUrl::fromLocalFile(folder.filePath(QStringLiteral("profile")))
                             .toString(QUrl::FullyEncoded);
    const TimedProcess process{program,
                               {QLatin1String("-env:UserInstallation=") + profile,
                                QStringLiteral("--headless"), QStringLiteral("--norestore"),
                                QStringLiteral("--nolockcheck"), QStringLiteral("--convert-to"),
                                QStringLiteral("png"), QStringLiteral("--outdir"), folder.path(),
                                in.fileName()},
                               m_limit};
    QFile out(folder.filePath(QStringLiteral("picture.png")));
    if (!process.run(Waiting::WithEvents) || !out.open(QIODevice::ReadOnly))
        return {};
    return out.read(PointReader::MostBytes);
}

} // namespace Quorlin
