#include "component/backends/postscript/ContentMarks.h"

#include "component/backends/postscript/ActualText.h"
#include "component/backends/postscript/ContentRewriter.h"
#include "component/backends/postscript/FormBox.h"
#include "component/backends/postscript/PostScriptText.h"
#include "component/backends/postscript/ShadingWriter.h"
#include "component/backends/postscript/StreamBytes.h"

#include <qpdf/QPDFPageObjectHelper.hh>

namespace Quorlin {

namespace {

/// Printing tools stop following forms inside forms earlier than this.
constexpr int MaxDepth = 40;
const MarkNames NoNames;

std::string drawing(const std::string &name)
{
    return "\n/" + name + " Do\n";
}

bool hasSubtype(QPDFObjectHandle stream, const char *subtype)
{
    auto value = stream.getDict().getKey("/Subtype");
    return value.isName() && value.getName() == subtype;
}

QPDFObjectHandle subDictionary(QPDFObjectHandle dictionary, const char *key)
{
    auto value = dictionary.isDictionary() ? dictionary.getKey(key) : dictionary;
    return value.isDictionary() ? value : QPDFObjectHandle::newDictionary();
}

bool flag(QPDFObjectHandle value)
{
    return value.isBool() && value.getBoolValue();
}

} // namespace

ContentMarks::ContentMarks(QPDF &pdf, MarkLibrary &library, TextFonts &texts, Purpose purpose)
    : m_pdf(pdf), m_library(library), m_texts(texts), m_purpose(purpose), m_uses(library)
{
}

const GraphicsStateMarks &ContentMarks::stateMarks(QPDFObjectHandle states, const std::string &name)
{
    auto state = states.getKey(name);
    if (!state.isIndirect()) {
        state = m_pdf.makeIndirectObject(state);
        states.replaceKey(name, state);
    }
    const auto id = state.getObjGen();
    const auto known = m_states.find(id);
    if (known != m_states.end())
        return known->second;
    return m_states[id] = GraphicsStateReader(m_library).take(state);
}

void ContentMarks::readStates(Scope &scope)
{
    auto states = subDictionary(scope.resources, "/ExtGState");
    for (const auto &name : states.getKeys()) {
        if (!states.getKey(name).isDictionary())
            continue;
        scope.blends = scope.blends || GraphicsStateReader::blends(states.getKey(name));
        const auto &marks = stateMarks(states, name);
        if (!marks.any())
            continue;
        scope.states.emplace(name.substr(1), marks);
        scope.hasOwn = true;
    }
}

std::vector<std::string> ContentMarks::imageMarks(QPDFObjectHandle image)
{
    auto dictionary = image.getDict();
    auto mask = dictionary.getKey("/SMask");
    if (!mask.isStream())
        return {};
    auto matte = mask.getDict().getKey("/Matte");
    std::string text;
    if (matte.isArray() && matte.getArrayNItems() <= 4) {
        for (auto value : matte.aitems())
            text += PostScriptText::number(value.isNumber() ? value.getNumericValue() : 0) + " ";
        text = "[" + text + "]";
    }
    text = (text.empty() ? "null" : text) + " QTsoftmask";
    dictionary.removeKey("/SMask");
    dictionary.removeKey("/Mask");
    return {m_library.mark(text), m_library.alias(mask), m_library.mark("QTsoftimage")};
}

void ContentMarks::readImages(Scope &scope)
{
    for (auto &entry : subDictionary(scope.resources, "/XObject").ditems()) {
        auto object = entry.second;
        if (!object.isStream() || !hasSubtype(object, "/Image"))
            continue;
        const auto id = object.getObjGen();
        scope.pictures.emplace(entry.first.substr(1), object);
        if (!m_images.count(id))
            m_images[id] = imageMarks(object);
        if (!m_images[id].empty())
            scope.maskedImages.emplace(entry.first.substr(1), m_images[id]);
    }
    scope.hasOwn = scope.hasOwn || !scope.maskedImages.empty();
}

void ContentMarks::markForms(Scope &scope)
{
    for (const auto &state : scope.states) {
        if (!state.second.mask)
            continue;
        const auto &inner = markForm(state.second.maskForm, scope.resources);
        scope.names.insert(inner.begin(), inner.end());
    }
    for (auto &entry : subDictionary(scope.resources, "/XObject").ditems()) {
        auto object = entry.second;
        if (!object.isStream() || !hasSubtype(object, "/Form"))
            continue;
        const auto &inner = markForm(object, scope.resources);
        scope.names.insert(inner.begin(), inner.end());
        scope.blends = scope.blends || m_formBlends[object.getObjGen()];
    }
}

void ContentMarks::readShadings(Scope &scope)
{
    for (auto &entry : subDictionary(scope.resources, "/Shading").ditems()) {
        auto shading = entry.second;
        const auto id = shading.getObjGen();
        const bool known = shading.isIndirect() && m_shadings.count(id) > 0;
        const auto text = known ? std::nullopt : ShadingWriter::fill(shading);
        const auto mark = known ? m_shadings[id] : text ? m_library.mark(*text) : std::string();
        if (shading.isIndirect())
            m_shadings[id] = mark;
        if (!mark.empty())
            scope.shadings.emplace(entry.first.substr(1), mark);
    }
    scope.hasOwn = scope.hasOwn || !scope.shadings.empty();
}

void ContentMarks::readSpans(Scope &scope)
{
    for (auto &entry : subDictionary(scope.resources, "/Properties").ditems()) {
        const auto text = actualText(entry.second);
        if (text)
            scope.spans.emplace(entry.first.substr(1), m_library.mark(m_texts.span(*text)));
    }
}

void ContentMarks::markPatterns(Scope &scope)
{
    for (auto &entry : subDictionary(scope.resources, "/Pattern").ditems()) {
        if (!entry.second.isStream())
            continue;
        auto resources = entry.second.getDict().getKey("/Resources");
        const auto &inner = markForm(entry.second, scope.resources);
        if (!resources.isDictionary() || inner.empty())
            continue;
        // Patterns do not see the resources of the page they are on.
        addMarks(resources, inner);
    }
}

void ContentMarks::addMarks(QPDFObjectHandle resources, const MarkNames &names)
{
    auto xObjects = subDictionary(resources, "/XObject");
    m_library.addTo(xObjects, names);
    resources.replaceKey("/XObject", xObjects);
}

void ContentMarks::fill(Scope &scope, QPDFObjectHandle resources)
{
    scope.resources = resources;
    if (m_purpose.transparency)
        readStates(scope);
    readImages(scope);
    readShadings(scope);
    readSpans(scope);
    // What follows may come back to this scope: the forms of one page often share its resources.
    markForms(scope);
    markPatterns(scope);
}

ContentMarks::Scope &ContentMarks::scopeOf(QPDFObjectHandle resources)
{
    const auto id = resources.getObjGen();
    const auto known = m_scopes.find(id);
    if (resources.isIndirect() && known != m_scopes.end())
        return *known->second;
    auto scope = std::make_unique<Scope>();
    auto &result = *scope;
    if (resources.isIndirect())
        m_scopes.emplace(id, std::move(scope));
    else
        m_directScopes.push_back(std::move(scope));
    fill(result, resources);
    return result;
}

std::string ContentMarks::groupBegin(QPDFObjectHandle form, bool blends) const
{
    auto group = form.getDict().getKey("/Group");
    const auto box = formInnerBox(form);
    if (!m_purpose.transparency || !group.isDictionary() || !box)
        return {};
    const bool isolated = flag(group.getKey("/I"));
    const bool knockout = flag(group.getKey("/K"));
    std::string text;
    for (const double edge : *box)
        text += PostScriptText::number(edge) + " ";
    text += isolated ? "true " : "false ";
    text += knockout ? "true " : "false ";
    text += knockout || (isolated && blends) ? "true " : "false ";
    return text + "QTgroup";
}

const MarkNames &ContentMarks::markForm(QPDFObjectHandle form, QPDFObjectHandle inherited)
{
    const auto id = form.getObjGen();
    const auto known = m_forms.find(id);
    if (known != m_forms.end())
        return known->second;
    if (m_depth >= MaxDepth)
        return NoNames;
    m_forms[id] = {}; // a form that draws itself ends here
    ++m_depth;
    auto names = rewriteForm(form, inherited);
    --m_depth;
    return m_forms[id] = std::move(names);
}

bool ContentMarks::needsMarks(const Scope &scope, const std::string &content) const
{
    return scope.hasOwn || m_purpose.invisibleText || !scope.spans.empty() ||
           content.find("/ActualText") != std::string::npos;
}

std::optional<std::string> ContentMarks::rewrite(const Scope &scope, const std::string &content,
                                                 MarkNames &names, bool isPage)
{
    const auto usePicture = [&](const std::string &name, const Matrix &place) {
        const auto picture = scope.pictures.find(name);
        return picture == scope.pictures.end() ? PictureUses::Use{{}, false}
                                               : m_uses.use(picture->second, place);
    };
    const bool invisible = m_purpose.invisibleText;
    const ContentRewriter::Names marks{
        scope.states,
        scope.maskedImages,
        scope.shadings,
        scope.spans,
        [&](const std::u16string &text) { return m_library.mark(m_texts.span(text)); },
        m_library.mark("QTspanend"),
        invisible ? m_library.mark("3 QTtr") : "",
        invisible ? m_library.mark("0 QTtr") : "",
        isPage ? decltype(ContentRewriter::Names::usePicture)(usePicture) : nullptr};
    ContentRewriter rewriter(marks);
    auto text = rewriter.rewrite(content);
    names.insert(rewriter.used().begin(), rewriter.used().end());
    return text;
}

MarkNames ContentMarks::rewriteForm(QPDFObjectHandle form, QPDFObjectHandle inherited)
{
    auto own = form.getDict().getKey("/Resources");
    const auto &scope = scopeOf(own.isDictionary() ? own : inherited);
    auto names = scope.names;
    m_formBlends[form.getObjGen()] = scope.blends;
    const auto begin = groupBegin(form, scope.blends);
    const auto content = streamBytes(form);
    if (!content || (begin.empty() && !needsMarks(scope, *content)))
        return names;
    auto text = rewrite(scope, *content, names, false);
    if (!text || (begin.empty() && *text == *content))
        return names;
    if (!begin.empty()) {
        const auto first = m_library.mark(begin);
        const auto last = m_library.mark("QTgroupend");
        *text = drawing(first) + *text + drawing(last);
        names.insert({first, last});
    }
    form.replaceStreamData(*text, QPDFObjectHandle::newNull(), QPDFObjectHandle::newNull());
    return names;
}

void ContentMarks::markAppearance(QPDFObjectHandle appearance, QPDFObjectHandle inherited,
                                  MarkNames &names)
{
    if (appearance.isStream()) {
        const auto &inner = markForm(appearance, inherited);
        names.insert(inner.begin(), inner.end());
    } else if (appearance.isDictionary()) {
        for (auto &state : appearance.ditems())
            if (state.second.isStream())
                markAppearance(state.second, inherited, names);
    }
}

void ContentMarks::markAnnotations(QPDFObjectHandle page, QPDFObjectHandle inherited,
                                   MarkNames &names)
{
    auto annotations = page.getKey("/Annots");
    if (!annotations.isArray())
        return;
    for (auto annotation : annotations.aitems())
        if (annotation.isDictionary())
            markAppearance(subDictionary(annotation, "/AP").getKey("/N"), inherited, names);
}

void ContentMarks::markPage(QPDFObjectHandle page)
{
    auto resources = QPDFPageObjectHelper(page).getAttribute("/Resources", false);
    if (!resources.isDictionary()) {
        resources = QPDFObjectHandle::newDictionary();
        page.replaceKey("/Resources", resources);
    }
    const auto &scope = scopeOf(resources);
    auto names = scope.names;
    markAnnotations(page, resources, names);
    const auto content = pageBytes(page);
    const auto text = content && (needsMarks(scope, *content) || !scope.pictures.empty())
                          ? rewrite(scope, *content, names, true)
                          : std::nullopt;
    if (text && *text != *content)
        page.replaceKey("/Contents", QPDFObjectHandle::newStream(&m_pdf, *text));
    if (!names.empty())
        addMarks(resources, names);
}

} // namespace Quorlin
