#pragma once

#include <qpdf/QPDF.hh>
#include <qpdf/QPDFObjectHandle.hh>

#include <set>
#include <vector>

namespace Quorlin {

/// What the pages of a document use, found by one walk over their resources.
class ResourceSurvey
{
public:
    explicit ResourceSurvey(QPDF &pdf);

    /// Looks at a page, the forms and patterns it draws and its annotations.
    void visitPage(QPDFObjectHandle page);

    /// True when something that was visited looks through.
    [[nodiscard]] bool transparent() const { return m_transparent; }

    /// The font dictionaries that were visited, each once. All are indirect objects: those
    /// that were not have been made so.
    [[nodiscard]] const std::vector<QPDFObjectHandle> &fonts() const { return m_fonts; }

private:
    void visitResources(QPDFObjectHandle resources);
    void visitStates(QPDFObjectHandle states);
    void visitXObjects(QPDFObjectHandle xObjects);
    void visitPatterns(QPDFObjectHandle patterns);
    void visitFonts(QPDFObjectHandle fonts);
    void visitAppearance(QPDFObjectHandle appearance);
    void visitStream(QPDFObjectHandle stream);
    [[nodiscard]] bool isNew(QPDFObjectHandle object);

    QPDF &m_pdf;
    std::set<QPDFObjGen> m_seen;
    std::vector<QPDFObjectHandle> m_fonts;
    bool m_transparent = false;
    int m_depth = 0;
};

} // namespace Quorlin
