#include "component/backends/office/ExportFilter.h"

#include "component/backends/office/UnoValues.h"

#include <com/sun/star/lang/XServiceInfo.hpp>

#include <array>

namespace Quorlin::ExportFilter {

namespace {

/// The special kinds of a document come before the general one that they also are.
constexpr std::array Filters{
    std::pair{"com.sun.star.text.WebDocument", "writer_web_pdf_Export"},
    std::pair{"com.sun.star.text.GlobalDocument", "writer_globaldocument_pdf_Export"},
    std::pair{"com.sun.star.text.GenericTextDocument", "writer_pdf_Export"},
    std::pair{"com.sun.star.sheet.SpreadsheetDocument", "calc_pdf_Export"},
    std::pair{"com.sun.star.presentation.PresentationDocument", "impress_pdf_Export"},
    std::pair{"com.sun.star.drawing.DrawingDocument", "draw_pdf_Export"},
    std::pair{"com.sun.star.formula.FormulaProperties", "math_pdf_Export"},
};

} // namespace

rtl::OUString nameFor(const css::uno::Reference<css::lang::XComponent> &document)
{
    const css::uno::Reference<css::lang::XServiceInfo> info(document, css::uno::UNO_QUERY_THROW);
    for (const auto &[service, filter] : Filters) {
        if (info->supportsService(rtl::OUString::createFromAscii(service)))
            return rtl::OUString::createFromAscii(filter);
    }
    return {};
}

css::uno::Sequence<css::beans::PropertyValue> options(bool plain)
{
    using UnoValues::property;
    return UnoValues::sequence({
        property("UseTaggedPDF", false),
        property("SelectPdfVersion", sal_Int32(0)),
        property("ExportFormFields", false),
        property("ExportNotes", false),
        property("ExportHiddenSlides", false),
        property("ReduceImageResolution", false),
        property("UseLosslessCompression", false),
        property("Quality", sal_Int32(95)),
        property("ExportBookmarks", !plain),
        property("ExportBookmarksToPDFDestination", false),
        property("ExportLinksRelativeFsys", true),
    });
}

} // namespace Quorlin::ExportFilter
