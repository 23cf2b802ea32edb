#pragma once

#include "component/backends/postscript/PdfPrinter.h"
#include "support/TestFolder.h"

#include <QByteArray>
#include <QString>

#include <memory>

class QPDF;
class QPDFObjectHandle;

namespace Quorlin {

/// Prints a PDF and distils the PostScript again, as the component does.
class PrintScene
{
public:
    PrintScene();
    ~PrintScene();

    [[nodiscard]] const TestFolder &folder() const { return m_folder; }

    /// What the next print() asks for besides its files.
    PrintRequest request;

    /// Prints these bytes. The PostScript is kept even when it cannot be distilled.
    PrintOutcome print(const QByteArray &pdf, PdfToPs tool = PdfToPs());

    [[nodiscard]] QByteArray postScript() const;

    /// Runs the distiller. @return what it had to say; empty when it was content.
    QByteArray distil(const QByteArray &level = "1.5");

    /// Prints and distils. @return false with a test failure when anything complained.
    bool run(const QByteArray &pdf);

    [[nodiscard]] QString resultPath() const { return m_folder.path("result.pdf"); }

    /// The words of the result, in reading order.
    [[nodiscard]] QStringList words() const;

    /// The result, opened.
    QPDF &result();
    [[nodiscard]] QPDFObjectHandle page(int number);

    /// The colour at a point of a page of the source or the result, in points from the lower left.
    [[nodiscard]] QList<int> sourceColor(int page, int x, int y);
    [[nodiscard]] QList<int> resultColor(int page, int x, int y);

private:
    TestFolder m_folder;
    QByteArray m_resultName;
    std::unique_ptr<QPDF> m_result;
};

/// Runs a program. @return its standard output and error together.
[[nodiscard]] QByteArray outputOf(const QString &program, const QStringList &arguments);

} // namespace Quorlin
