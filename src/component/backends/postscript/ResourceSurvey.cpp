#include "component/backends/postscript/ResourceSurvey.h"

#include "component/backends/postscript/GraphicsStateMarks.h"

#include <qpdf/QPDFPageObjectHelper.hh>

namespace Quorlin {

namespace {

/// Printing tools stop following forms inside forms earlier than this.
constexpr int MaxDepth = 60;

} // namespace

ResourceSurvey::ResourceSurvey(QPDF &pdf) : m_pdf(pdf) {}

bool ResourceSurvey::isNew(QPDFObjectHandle object)
{
    return !object.isIndirect() || m_seen.insert(object.getObjGen()).second;
}

void ResourceSurvey::visitPage(QPDFObjectHandle page)
{
    visitResources(QPDFPageObjectHelper(page).getAttribute("/Resources", false));
    auto annotations = page.getKey("/Annots");
    if (!annotations.isArray())
        return;
    for (auto annotation : annotations.aitems())
        if (annotation.isDictionary() && annotation.getKey("/AP").isDictionary())
            visitAppearance(annotation.getKey("/AP").getKey("/N"));
}

void ResourceSurvey::visitAppearance(QPDFObjectHandle appearance)
{
    if (appearance.isStream())
        visitStream(appearance);
    else if (appearance.isDictionary())
        for (auto &state : appearance.ditems())
            if (state.second.isStream())
                visitStream(state.second);
}

void ResourceSurvey::visitStream(QPDFObjectHandle stream)
{
    if (isNew(stream))
        visitResources(stream.getDict().getKey("/Resources"));
}

void ResourceSurvey::visitResources(QPDFObjectHandle resources)
{
    if (!resources.isDictionary() || m_depth >= MaxDepth || !isNew(resources))
        return;
    ++m_depth;
    visitStates(resources.getKey("/ExtGState"));
    visitXObjects(resources.getKey("/XObject"));
    visitPatterns(resources.getKey("/Pattern"));
    visitFonts(resources.getKey("/Font"));
    --m_depth;
}

void ResourceSurvey::visitStates(QPDFObjectHandle states)
{
    if (!states.isDictionary() || !isNew(states))
        return;
    for (auto &entry : states.ditems()) {
        auto state = entry.second;
        if (!state.isDictionary() || !GraphicsStateReader::isTransparent(state))
            continue;
        m_transparent = true;
        auto mask = state.getKey("/SMask");
        if (mask.isDictionary() && mask.getKey("/G").isStream())
            visitStream(mask.getKey("/G"));
    }
}

void ResourceSurvey::visitXObjects(QPDFObjectHandle xObjects)
{
    if (!xObjects.isDictionary() || !isNew(xObjects))
        return;
    for (auto &entry : xObjects.ditems()) {
        auto object = entry.second;
        if (!object.isStream())
            continue;
        m_transparent = m_transparent || object.getDict().hasKey("/SMask");
        visitStream(object);
    }
}

void ResourceSurvey::visitPatterns(QPDFObjectHandle patterns)
{
    if (!patterns.isDictionary() || !isNew(patterns))
        return;
    for (auto &entry : patterns.ditems())
        if (entry.second.isStream())
            visitStream(entry.second);
}

void ResourceSurvey::visitFonts(QPDFObjectHandle fonts)
{
    if (!fonts.isDictionary() || !isNew(fonts))
        return;
    for (const auto &name : fonts.getKeys()) {
        auto font = fonts.getKey(name);
        if (!font.isDictionary() || !isNew(font))
            continue;
        if (!font.isIndirect()) {
            font = m_pdf.makeIndirectObject(font);
            fonts.replaceKey(name, font);
        }
        m_fonts.push_back(font);
        visitResources(font.getKey("/Resources"));
    }
}

} // namespace Quorlin
