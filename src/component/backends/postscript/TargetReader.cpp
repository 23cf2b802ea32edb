#include "component/backends/postscript/TargetReader.h"

#include "component/backends/postscript/PdfName.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>

namespace Quorlin {

namespace {

struct ViewKind
{
    std::string_view name;
    int values;
};

constexpr std::array<ViewKind, 8> ViewKinds{{{"XYZ", 3},
                                             {"Fit", 0},
                                             {"FitH", 1},
                                             {"FitV", 1},
                                             {"FitR", 4},
                                             {"FitB", 0},
                                             {"FitBH", 1},
                                             {"FitBV", 1}}};

std::optional<double> coordinate(QPDFObjectHandle value)
{
    if (!value.isNumber() || !std::isfinite(value.getNumericValue()))
        return std::nullopt;
    return value.getNumericValue();
}

PdfView readView(QPDFObjectHandle array)
{
    PdfView view{"XYZ", {std::nullopt, std::nullopt, std::nullopt}};
    auto type = array.getArrayNItems() > 1 ? lettersOf(array.getArrayItem(1)) : std::string();
    const auto kind = std::find_if(ViewKinds.begin(), ViewKinds.end(),
                                   [&](const ViewKind &k) { return k.name == type; });
    if (kind == ViewKinds.end())
        return view;
    view = {type, {}};
    for (int i = 0; i < kind->values; ++i)
        view.values.push_back(i + 2 < array.getArrayNItems() ? coordinate(array.getArrayItem(i + 2))
                                                             : std::nullopt);
    return view;
}

/// The path of a file specification.
std::string filePath(QPDFObjectHandle file)
{
    if (file.isString())
        return file.getStringValue();
    if (!file.isDictionary())
        return {};
    for (const char *key : {"/F", "/UF", "/Unix", "/DOS"})
        if (file.getKey(key).isString())
            return file.getKey(key).getStringValue();
    return {};
}

} // namespace

TargetReader::TargetReader(std::map<QPDFObjGen, int> pages) : m_pages(std::move(pages)) {}

int TargetReader::pageNumber(QPDFObjectHandle page) const
{
    if (page.isInteger()) {
        const auto index = page.getIntValue();
        return index >= 0 && index < static_cast<long long>(m_pages.size())
                   ? static_cast<int>(index) + 1
                   : 0;
    }
    const auto found = m_pages.find(page.getObjGen());
    return page.isIndirect() && found != m_pages.end() ? found->second : 0;
}

PdfTarget TargetReader::explicitDestination(QPDFObjectHandle array) const
{
    PdfTarget target;
    target.page = array.getArrayNItems() > 0 ? pageNumber(array.getArrayItem(0)) : 0;
    if (target.page == 0)
        return {};
    target.kind = PdfTarget::Kind::Page;
    target.view = readView(array);
    return target;
}

PdfTarget TargetReader::destination(QPDFObjectHandle object) const
{
    if (object.isDictionary())
        object = object.getKey("/D");
    if (object.isArray())
        return explicitDestination(object);
    PdfTarget target;
    if (object.isName())
        target.text = object.getName().substr(1);
    else if (object.isString())
        target.text = object.getStringValue();
    else
        return {};
    target.kind = PdfTarget::Kind::Name;
    return target;
}

PdfTarget TargetReader::remote(QPDFObjectHandle action) const
{
    PdfTarget target;
    target.kind = PdfTarget::Kind::RemoteFile;
    target.text = filePath(action.getKey("/F"));
    auto where = action.getKey("/D");
    if (where.isString())
        target.name = where.getStringValue();
    else if (where.isName())
        target.name = where.getName().substr(1);
    else if (where.isArray() && where.getArrayNItems() > 0 && where.getArrayItem(0).isInteger()) {
        target.page = std::clamp(where.getArrayItem(0).getIntValueAsInt(), 0, 1000000) + 1;
        target.view = readView(where);
    }
    return target.text.empty() ? PdfTarget() : target;
}

PdfTarget TargetReader::action(QPDFObjectHandle object) const
{
    if (!object.isDictionary())
        return {};
    auto kind = lettersOf(object.getKey("/S"));
    PdfTarget target;
    if (kind == "GoTo")
        return destination(object.getKey("/D"));
    if (kind == "GoToR")
        return remote(object);
    if (kind == "URI" && object.getKey("/URI").isString()) {
        target.kind = PdfTarget::Kind::Uri;
        target.text = object.getKey("/URI").getStringValue();
    } else if (kind == "Launch") {
        target.text = filePath(object.getKey("/F"));
        target.kind = target.text.empty() ? PdfTarget::Kind::None : PdfTarget::Kind::Launch;
    } else if (kind == "Named") {
        target.text = lettersOf(object.getKey("/N"));
        target.kind = target.text.empty() ? PdfTarget::Kind::None : PdfTarget::Kind::Command;
    }
    return target;
}

PdfTarget TargetReader::targetOf(QPDFObjectHandle owner) const
{
    auto target = destination(owner.getKey("/Dest"));
    return target.kind != PdfTarget::Kind::None ? target : action(owner.getKey("/A"));
}

} // namespace Quorlin
