#include "component/backends/postscript/PrintCopy.h"

#include "component/backends/postscript/ContentMarks.h"
#include "component/backends/postscript/FontRepair.h"
#include "component/backends/postscript/InventoryReader.h"
#include "component/backends/postscript/ResourceSurvey.h"
#include "component/backends/postscript/Type1Names.h"

#include <QFile>

#include <qpdf/QPDF.hh>
#include <qpdf/QPDFExc.hh>
#include <qpdf/QPDFSystemError.hh>
#include <qpdf/QPDFWriter.hh>

#include <cerrno>

namespace Quorlin {

namespace {

/// What only viewers need, and what would let a document act while it is printed.
constexpr const char *RootKeys[] = {"/OutputIntents", "/Outlines",   "/StructTreeRoot",
                                    "/Metadata",      "/Names",      "/Dests",
                                    "/OpenAction",    "/AA",         "/PieceInfo",
                                    "/MarkInfo",      "/PageLabels", "/Threads",
                                    "/Lang",          "/SpiderInfo", "/URI",
                                    "/Perms",         "/Legal",      "/Collection"};
constexpr const char *PageKeys[] = {"/CropBox",       "/BleedBox",  "/TrimBox", "/ArtBox",
                                    "/StructParents", "/Thumb",     "/B",       "/AA",
                                    "/Metadata",      "/PieceInfo", "/UserUnit"};

Reason reasonOf(const QPDFExc &error)
{
    switch (error.getErrorCode()) {
    case qpdf_e_password:
    case qpdf_e_unsupported:
        return Reason::Protected;
    case qpdf_e_system:
        return Reason::NotReadable;
    default:
        return Reason::Damaged;
    }
}

/// A link whose border would not be printed anyway.
bool isInvisibleLink(QPDFObjectHandle annotation)
{
    constexpr long long PrintFlag = 4;
    auto subtype = annotation.getKey("/Subtype");
    if (!subtype.isName() || subtype.getName() != "/Link")
        return false;
    auto flags = annotation.getKey("/F");
    if (!flags.isInteger() || (flags.getIntValue() & PrintFlag) == 0)
        return true;
    auto border = annotation.getKey("/Border");
    return border.isArray() && border.getArrayNItems() >= 3 && border.getArrayItem(2).isNumber() &&
           border.getArrayItem(2).getNumericValue() == 0;
}

void dropInvisibleLinks(QPDFObjectHandle page)
{
    auto annotations = page.getKey("/Annots");
    if (!annotations.isArray())
        return;
    auto kept = QPDFObjectHandle::newArray();
    for (auto annotation : annotations.aitems())
        if (annotation.isDictionary() && !isInvisibleLink(annotation))
            kept.appendItem(annotation);
    if (kept.getArrayNItems() == 0)
        page.removeKey("/Annots");
    else
        page.replaceKey("/Annots", kept);
}

} // namespace

PrintCopy::PrintCopy() = default;
PrintCopy::~PrintCopy() = default;

Reason PrintCopy::open(const QString &path, bool foreign)
{
    try {
        return openFile(path, foreign);
    } catch (const QPDFExc &error) {
        m_detail = QString::fromStdString(error.getMessageDetail());
        return reasonOf(error);
    } catch (const std::bad_alloc &) {
        return Reason::OutOfMemory;
    } catch (const std::exception &error) {
        m_detail = QString::fromUtf8(error.what());
        return QFile::exists(path) ? Reason::Damaged : Reason::NotFound;
    }
}

Reason PrintCopy::openFile(const QString &path, bool foreign)
{
    m_foreign = foreign;
    m_pdf = std::make_unique<QPDF>();
    m_pdf->setSuppressWarnings(true);
    m_path = QFile::encodeName(path);
    m_pdf->processFile(m_path.constData());
    if (foreign && m_pdf->isEncrypted() && !m_pdf->ownerPasswordMatched() &&
        !m_pdf->allowPrintLowRes())
        return Reason::NotPrintable;
    m_inventory = InventoryReader(*m_pdf).read();
    return m_inventory.pages.empty() ? Reason::NothingPrinted : Reason::None;
}

Reason PrintCopy::write(const QString &path)
{
    try {
        save(path, rewrite());
        return Reason::None;
    } catch (const std::bad_alloc &) {
        return Reason::OutOfMemory;
    } catch (const QPDFSystemError &error) {
        m_detail = QString::fromUtf8(error.what());
        return error.getErrno() == ENOSPC ? Reason::NoRoom : Reason::NotAllowed;
    } catch (const std::exception &error) {
        m_detail = QString::fromUtf8(error.what());
        return Reason::Damaged;
    }
}

std::map<QPDFObjGen, FontUnicode> PrintCopy::rewrite()
{
    std::map<QPDFObjGen, FontUnicode> texts;
    disarm();
    cleanRoot();
    const auto &pages = m_pdf->getAllPages();
    for (std::size_t i = 0; i < pages.size(); ++i)
        cleanPage(i);
    ResourceSurvey survey(*m_pdf);
    for (const auto &page : pages)
        survey.visitPage(page);
    Type1Names names;
    for (auto font : survey.fonts()) {
        FontRepair::repair(*m_pdf, font);
        names.separate(font);
        texts[font.getObjGen()] = FontRepair::readTexts(font);
    }
    MarkLibrary library(*m_pdf);
    ContentMarks marks(*m_pdf, library, m_textFonts, {survey.transparent(), m_foreign});
    for (const auto &page : pages)
        marks.markPage(page);
    marks.finish();
    return texts;
}

void PrintCopy::disarm()
{
    if (!m_foreign)
        return;
    for (auto &object : m_pdf->getAllObjects()) {
        if (!object.isStream())
            continue;
        auto dictionary = object.getDict();
        for (const char *key : {"/Subtype", "/Subtype2"}) {
            auto value = dictionary.getKey(key);
            if (value.isName() && value.getName() == "/PS")
                dictionary.removeKey(key);
        }
        dictionary.removeKey("/OPI");
    }
}

void PrintCopy::cleanRoot()
{
    auto root = m_pdf->getRoot();
    for (const char *key : RootKeys)
        root.removeKey(key);
    m_pdf->getTrailer().removeKey("/Info");
}

void PrintCopy::cleanPage(std::size_t index)
{
    auto page = m_pdf->getAllPages().at(index);
    const auto &geometry = m_inventory.pages.at(index);
    for (const char *key : PageKeys)
        page.removeKey(key);
    const auto &box = geometry.box();
    page.replaceKey("/MediaBox",
                    QPDFObjectHandle::newFromRectangle({box[0], box[1], box[2], box[3]}));
    page.replaceKey("/CropBox", page.getKey("/MediaBox"));
    page.replaceKey("/Rotate", QPDFObjectHandle::newInteger(geometry.rotation()));
    dropInvisibleLinks(page);
}

void PrintCopy::save(const QString &path, std::map<QPDFObjGen, FontUnicode> texts)
{
    const auto name = QFile::encodeName(path); // the writer keeps no copy of it
    QPDFWriter writer(*m_pdf, name.constData());
    writer.setStreamDataMode(qpdf_s_preserve);
    writer.setObjectStreamMode(qpdf_o_disable);
    writer.setPreserveEncryption(false);
    writer.setStaticID(true);
    writer.write();
    for (auto &[id, font] : texts) {
        const auto written = writer.getRenumberedObjGen(id);
        if (written.getObj() > 0)
            m_fonts.emplace("F" + written.unparse('_'), std::move(font));
    }
}

} // namespace Quorlin
