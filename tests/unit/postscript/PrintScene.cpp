#include "unit/postscript/PrintScene.h"

#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QTest>

#include <qpdf/QPDF.hh>

namespace Quorlin {

namespace {

/// The colour of the pixel at a point, the page being drawn at one pixel to a point.
QList<int> colorAt(const QString &pdf, int page, int x, int y)
{
    const auto number = QString::number(page);
    QProcess draw;
    draw.start(QStringLiteral("pdftoppm"),
               {QStringLiteral("-r"), QStringLiteral("72"), QStringLiteral("-aa"),
                QStringLiteral("no"), QStringLiteral("-f"), number, QStringLiteral("-l"), number,
                pdf});
    draw.waitForFinished();
    const auto picture = draw.readAllStandardOutput();
    const auto lines = picture.left(40).split('\n');
    const auto size = lines.value(1).split(' ');
    const int width = size.value(0).toInt();
    const int height = size.value(1).toInt();
    const auto start = picture.size() - qsizetype(3) * width * height;
    const auto pixel = start + 3 * ((height - 1 - qsizetype(y)) * width + x);
    if (start < 0 || pixel + 3 > picture.size() || pixel < 0)
        return {};
    return {uchar(picture[pixel]), uchar(picture[pixel + 1]), uchar(picture[pixel + 2])};
}

} // namespace

QByteArray outputOf(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(program, arguments);
    process.waitForFinished();
    return process.readAll();
}

PrintScene::PrintScene()
{
    request.input = m_folder.path("source.pdf");
    request.output = m_folder.path("printed.ps");
    request.workFolder = m_folder.path();
    request.printer = QStringLiteral("Test printer");
    request.title = QStringLiteral("a document");
}

PrintScene::~PrintScene() = default;

PrintOutcome PrintScene::print(const QByteArray &pdf, PdfToPs tool)
{
    m_folder.write("source.pdf", pdf);
    return PdfPrinter(std::move(tool)).run(request, [](int) {});
}

QByteArray PrintScene::postScript() const
{
    return contentOf(request.output);
}

QByteArray PrintScene::distil(const QByteArray &level)
{
    m_result.reset();
    return outputOf(QStringLiteral("gs"),
                    {QStringLiteral("-q"), QStringLiteral("-dSAFER"), QStringLiteral("-dNOPAUSE"),
                     QStringLiteral("-dBATCH"), QStringLiteral("-dALLOWPSTRANSPARENCY"),
                     QStringLiteral("-sDEVICE=pdfwrite"),
                     QStringLiteral("-dCompatibilityLevel=") + QString::fromLatin1(level),
                     QStringLiteral("-dAutoRotatePages=/None"), QStringLiteral("-o"), resultPath(),
                     request.output});
}

bool PrintScene::run(const QByteArray &pdf)
{
    const auto outcome = print(pdf);
    if (outcome.reason != Reason::None) {
        QTest::qFail(qPrintable(reasonKey(outcome.reason) + outcome.text), __FILE__, __LINE__);
        return false;
    }
    const auto complaint = distil();
    if (!complaint.isEmpty())
        QTest::qFail(complaint.constData(), __FILE__, __LINE__);
    return complaint.isEmpty();
}

QStringList PrintScene::words() const
{
    const auto text = outputOf(QStringLiteral("pdftotext"), {resultPath(), QStringLiteral("-")});
    return QString::fromUtf8(text).split(QRegularExpression(QStringLiteral("\\s+")),
                                         Qt::SkipEmptyParts);
}

QPDF &PrintScene::result()
{
    if (!m_result) {
        m_result = std::make_unique<QPDF>();
        m_resultName = QFile::encodeName(resultPath());
        m_result->processFile(m_resultName.constData());
    }
    return *m_result;
}

QPDFObjectHandle PrintScene::page(int number)
{
    return result().getAllPages().at(static_cast<std::size_t>(number - 1));
}

QList<int> PrintScene::sourceColor(int page, int x, int y)
{
    return colorAt(request.input, page, x, y);
}

QList<int> PrintScene::resultColor(int page, int x, int y)
{
    return colorAt(resultPath(), page, x, y);
}

} // namespace Quorlin
