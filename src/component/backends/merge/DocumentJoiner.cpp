#include "component/backends/merge/DocumentJoiner.h"

#include "component/backends/merge/KeyedTree.h"
#include "component/backends/merge/MergeFailure.h"
#include "component/backends/merge/OutputFile.h"

#include <qpdf/QPDFExc.hh>
#include <qpdf/QPDFWriter.hh>

namespace Quorlin {

DocumentJoiner::DocumentJoiner() : m_outlines(m_pdf), m_fields(m_pdf)
{
    m_pdf.emptyPDF();
    m_pdf.setSuppressWarnings(true);
    m_pageRoot = m_pdf.getRoot().getKey("/Pages");
}

void DocumentJoiner::append(const QString &path, const std::optional<QString> &title)
{
    const auto bytes = std::make_shared<const FileBytes>(path);
    m_files.push_back(bytes);
    SourceDocument source(bytes);
    try {
        appendDocument(source, title);
    } catch (const QPDFExc &) {
        throw MergeFailure(Reason::Damaged);
    }
}

void DocumentJoiner::appendDocument(SourceDocument &source, const std::optional<QString> &title)
{
    DestinationNames names(source, m_destinations);
    ObjectCopier copier(source, m_pdf, names, m_shared);
    const auto count = static_cast<long long>(source.pages().size());
    auto node = addPageNode(count);
    const auto pages = copier.copyPages(node);
    node.replaceKey("/Kids", QPDFObjectHandle::newArray(pages));
    copier.run();
    if (title)
        m_outlines.beginEntry(title->toStdString(), pages.front());
    m_outlines.addOutlines(source.catalogEntry("/Outlines"), copier);
    m_labels.add(source.catalogEntry("/PageLabels"), m_pageCount, count, copier);
    m_layers.add(source.catalogEntry("/OCProperties"), copier);
    addNames(source, names, copier);
    if (!m_information)
        keepFirst(source, copier);
    m_fields.add(source.catalogEntry("/AcroForm"), copier);
    copier.run();
    m_pageCount += count;
    m_version.updateIfGreater(source.version());
}

QPDFObjectHandle DocumentJoiner::addPageNode(long long count)
{
    auto node = QPDFObjectHandle::newDictionary();
    node.replaceKey("/Type", QPDFObjectHandle::newName("/Pages"));
    node.replaceKey("/Parent", m_pageRoot);
    node.replaceKey("/Count", QPDFObjectHandle::newInteger(count));
    m_pageNodes.push_back(m_pdf.makeIndirectObject(node));
    return m_pageNodes.back();
}

void DocumentJoiner::addNames(SourceDocument &source, DestinationNames &names, ObjectCopier &copier)
{
    for (const auto &[name, target] : names.targets())
        m_destinations.setValue(name, copier.copyNamedTarget(target));
    auto sourceNames = source.catalogEntry("/Names");
    if (sourceNames.isDictionary()) {
        for (auto [key, file] : KeyedTree::read(sourceNames.getKey("/EmbeddedFiles"), "/Names")) {
            if (key.isString())
                m_attachments.setValue(m_attachments.reserve(key.getStringValue()),
                                       copier.copy(file));
        }
    }
    auto threads = source.catalogEntry("/Threads");
    if (threads.isArray()) {
        for (const auto &thread : threads.getArrayAsVector())
            m_threads.push_back(copier.copy(thread));
    }
}

void DocumentJoiner::keepFirst(SourceDocument &source, ObjectCopier &copier)
{
    m_information.emplace(source, copier);
    for (const auto *key : {"/Lang", "/PageLayout", "/ViewerPreferences"})
        m_pdf.getRoot().replaceKey(key, copier.copy(source.catalogEntry(key)));
    auto mode = source.catalogEntry("/PageMode");
    if (mode.isName() && !mode.isNameAndEquals("/UseOutlines"))
        m_pdf.getRoot().replaceKey("/PageMode", copier.copy(mode));
    auto action = source.catalogEntry("/OpenAction");
    if (action.isArray())
        m_pdf.getRoot().replaceKey("/OpenAction", copier.copyTarget(action));
    else if (action.isDictionary() && action.getKey("/S").isNameAndEquals("/GoTo"))
        m_pdf.getRoot().replaceKey("/OpenAction", copier.copy(action));
}

void DocumentJoiner::finish()
{
    auto root = m_pdf.getRoot();
    finishPageTree();
    finishNames();
    root.replaceKey("/PageLabels", m_labels.write(m_pdf));
    root.replaceKey("/AcroForm", m_fields.write());
    root.replaceKey("/OCProperties", m_layers.write(m_pdf));
    if (!m_threads.empty())
        root.replaceKey("/Threads",
                        m_pdf.makeIndirectObject(QPDFObjectHandle::newArray(m_threads)));
    if (!m_outlines.isEmpty()) {
        root.replaceKey("/Outlines", m_outlines.write());
        root.replaceKey("/PageMode", QPDFObjectHandle::newName("/UseOutlines"));
    }
    if (m_information)
        m_information->write(m_pdf);
}

void DocumentJoiner::finishPageTree()
{
    m_pageRoot.replaceKey("/Kids", QPDFObjectHandle::newArray(m_pageNodes));
    m_pageRoot.replaceKey("/Count", QPDFObjectHandle::newInteger(m_pageCount));
}

void DocumentJoiner::finishNames()
{
    auto names = QPDFObjectHandle::newDictionary();
    if (!m_destinations.values().empty())
        names.replaceKey("/Dests", KeyedTree::writeNames(m_pdf, m_destinations.values()));
    if (!m_attachments.values().empty())
        names.replaceKey("/EmbeddedFiles", KeyedTree::writeNames(m_pdf, m_attachments.values()));
    if (!names.getKeys().empty())
        m_pdf.getRoot().replaceKey("/Names", names);
}

void DocumentJoiner::write(const QString &path, const std::function<void(int)> &progress)
{
    finish();
    OutputFile file(path);
    QPDFWriter writer(m_pdf);
    writer.setOutputPipeline(&file);
    writer.setObjectStreamMode(qpdf_o_generate);
    writer.setDecodeLevel(qpdf_dl_none);
    writer.setMinimumPDFVersion(m_version);
    writer.registerProgressReporter(
        std::make_shared<QPDFWriter::FunctionProgressReporter>(progress));
    writer.write();
    file.commit();
}

} // namespace Quorlin
