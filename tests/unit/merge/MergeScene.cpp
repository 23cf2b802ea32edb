#include "unit/merge/MergeScene.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>

#include <qpdf/Buffer.hh>
#include <qpdf/QPDFNameTreeObjectHelper.hh>

namespace Quorlin {

void MergeScene::add(PdfMaker &maker, const QString &name)
{
    m_inputs.append(path(name + QStringLiteral(".pdf")));
    maker.save(m_inputs.last());
}

void MergeScene::addBytes(const QByteArray &bytes, const QString &name)
{
    m_inputs.append(path(name + QStringLiteral(".pdf")));
    QFile file(m_inputs.last());
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        throw std::runtime_error("cannot write the input");
}

QStringList MergeScene::files() const
{
    return QDir(m_folder.path()).entryList(QDir::Files | QDir::Hidden, QDir::Name);
}

QJsonObject MergeScene::request(bool bookmarks) const
{
    QJsonArray inputs;
    for (const auto &input : m_inputs)
        inputs.append(QJsonObject{{QStringLiteral("file"), input},
                                  {QStringLiteral("title"), QFileInfo(input).baseName()}});
    return {{QStringLiteral("id"), 1},
            {QStringLiteral("op"), QStringLiteral("merge")},
            {QStringLiteral("inputs"), inputs},
            {QStringLiteral("output"), output()},
            {QStringLiteral("bookmarks"), bookmarks}};
}

MergeOutcome MergeScene::merge(bool bookmarks)
{
    m_result.reset();
    m_progress.clear();
    MergeRequest job(request(bookmarks), [this](int percent) { m_progress.push_back(percent); });
    return job.run();
}

QPDF &MergeScene::result()
{
    if (!m_result) {
        m_result = std::make_unique<QPDF>();
        m_result->processFile(QFile::encodeName(output()).constData());
        if (m_result->anyWarnings())
            throw std::runtime_error("the result is damaged");
    }
    return *m_result;
}

QPDFObjectHandle MergeScene::page(int number)
{
    return result().getAllPages().at(static_cast<size_t>(number - 1));
}

QString MergeScene::pageNames()
{
    QStringList names;
    for (const auto &item : result().getAllPages())
        names.append(pageName(item));
    return names.join(QLatin1Char(' '));
}

QString MergeScene::targetOf(QPDFObjectHandle target)
{
    if (target.isString()) {
        auto tree = root().getKey("/Names").getKey("/Dests");
        QPDFObjectHandle found;
        QPDFNameTreeObjectHelper names(tree, result());
        if (!names.findObject(target.getUTF8Value(), found))
            return QStringLiteral("undefined");
        target = found.isDictionary() ? found.getKey("/D") : found;
    }
    if (!target.isArray())
        return QStringLiteral("none");
    const auto item = target.getArrayItem(0);
    for (const auto &candidate : result().getAllPages()) {
        if (item.isIndirect() && item.getObjGen() == candidate.getObjGen())
            return pageName(candidate);
    }
    return QStringLiteral("lost");
}

QString MergeScene::leadsTo(QPDFObjectHandle item)
{
    if (item.hasKey("/S"))
        return targetOf(item.getKey("/D"));
    return item.hasKey("/A") ? leadsTo(item.getKey("/A")) : targetOf(item.getKey("/Dest"));
}

QString MergeScene::bookmarks()
{
    auto outlines = root().getKey("/Outlines");
    return outlines.isNull() ? QString() : bookmarksFrom(outlines.getKey("/First"));
}

QString MergeScene::bookmarksFrom(QPDFObjectHandle item)
{
    QStringList items;
    for (; item.isDictionary(); item = item.getKey("/Next")) {
        auto count = item.getKey("/Count");
        auto text = count.isInteger() && count.getIntValue() > 0 ? QStringLiteral("+") : QString();
        text += QString::fromStdString(item.getKey("/Title").getUTF8Value());
        text += QLatin1Char('>') + leadsTo(item);
        if (item.hasKey("/First"))
            text += QLatin1Char('{') + bookmarksFrom(item.getKey("/First")) + QLatin1Char('}');
        items.append(text);
    }
    return items.join(QLatin1Char(' '));
}

QPDFObjectHandle MergeScene::annotation(int pageNumber, int number)
{
    return page(pageNumber).getKey("/Annots").getArrayItem(number - 1);
}

QString pageName(QPDFObjectHandle page)
{
    const auto data = page.getKey("/Contents").getStreamData();
    const auto text = QByteArray(reinterpret_cast<const char *>(data->getBuffer()),
                                 static_cast<qsizetype>(data->getSize()));
    const auto start = text.indexOf('(') + 1;
    return QString::fromLatin1(text.mid(start, text.indexOf(')') - start));
}

} // namespace Quorlin
