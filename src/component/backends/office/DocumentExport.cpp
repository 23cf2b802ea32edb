#include "component/backends/office/DocumentExport.h"

#include "component/backends/office/EncryptedPackage.h"
#include "component/backends/office/ExportFilter.h"
#include "component/backends/office/ExportedPdf.h"
#include "component/backends/office/NameCheck.h"
#include "component/backends/office/PasswordRefusal.h"
#include "component/backends/office/ProgressIndicator.h"
#include "component/backends/office/UnoValues.h"
#include "component/confinement/DiskRoom.h"
#include "component/protocol/Acceptance.h"

#include <QFileInfo>

#include <com/sun/star/document/MacroExecMode.hpp>
#include <com/sun/star/document/UpdateDocMode.hpp>
#include <com/sun/star/frame/XStorable.hpp>
#include <com/sun/star/lang/DisposedException.hpp>
#include <com/sun/star/util/CloseVetoException.hpp>
#include <com/sun/star/util/XCloseable.hpp>

#include <rtl/ref.hxx>

#include <utility>

namespace Quorlin {

using css::uno::Reference;
using UnoValues::property;
using UnoValues::sequence;

namespace {

constexpr int LoadedPercent = 50;
constexpr qint64 LittleRoom = 1024 * 1024; ///< bytes

/// Closes a document whatever happens to it before.
class ClosingDocument
{
public:
    explicit ClosingDocument(DocumentExport::Document document) : m_document(std::move(document)) {}
    ~ClosingDocument() { close(); }
    ClosingDocument(const ClosingDocument &) = delete;
    ClosingDocument &operator=(const ClosingDocument &) = delete;

    [[nodiscard]] const DocumentExport::Document &get() const { return m_document; }

private:
    void close() noexcept
    {
        try {
            const Reference<css::util::XCloseable> closeable(m_document, css::uno::UNO_QUERY);
            if (closeable.is())
                closeable->close(true);
            else
                m_document->dispose();
        } catch (const css::util::CloseVetoException &) {
            // With "true" it closes itself as soon as whoever objected lets go of it.
        } catch (const css::uno::Exception &) {
            // The engine is gone, and the document with it; the next call to it tells.
        }
    }

    DocumentExport::Document m_document;
};

Reason unreadable(const QString &path)
{
    const QFileInfo info(path);
    if (!info.exists())
        return Reason::NotFound;
    if (!info.isFile())
        return Reason::NotRegular;
    if (!info.isReadable())
        return Reason::NotReadable;
    return info.size() == 0 ? Reason::Empty : Reason::None;
}

/// Workbooks whose cells alone are locked are encrypted, too, under a password that every
/// spreadsheet program knows.
bool mayOpenByItself(const QString &path)
{
    const auto extension = QFileInfo(path).suffix().toLower();
    return Acceptance::extensions(Family::Excel).contains(extension);
}

/// Why nothing was written although the document could be opened.
WorkerResult notStored(const QString &output, const QString &text)
{
    if (DiskRoom::isShort(QFileInfo(output).path(), LittleRoom))
        return {Reason::NoRoom, {}, {}};
    return {Reason::EngineFailed, text, {}};
}

WorkerResult resultOf(const QString &output)
{
    const auto pdf = ExportedPdf::look(output);
    if (!pdf.whole)
        return notStored(output, QStringLiteral("the office engine wrote no whole PDF"));
    if (pdf.pages == 0)
        return {Reason::NothingPrinted, {}, {}};
    WorkerResult result;
    if (pdf.pages > 0)
        result.values.insert(QStringLiteral("pages"), pdf.pages);
    return result;
}

} // namespace

DocumentExport::DocumentExport(Desktop desktop, std::function<void(int)> progress)
    : m_desktop(std::move(desktop)), m_progress(std::move(progress))
{
}

WorkerResult DocumentExport::run(const ExportOrder &order)
{
    if (const auto reason = unreadable(order.input); reason != Reason::None)
        return {reason, {}, {}};
    // The engine would make the folder, and all those above it.
    if (!QFileInfo(QFileInfo(order.output).path()).isDir())
        return {Reason::NotAllowed, QStringLiteral("the folder for the result is missing"), {}};
    const bool isEncrypted = isEncryptedPackage(order.input);
    if (isEncrypted && !mayOpenByItself(order.input))
        return {Reason::Protected, {}, {}};
    if (contradictsItsName(order.input))
        return {Reason::Damaged, {}, {}};
    bool isProtected = isEncrypted;
    auto loaded = load(order.input, isProtected);
    if (!loaded.is())
        return {isProtected ? Reason::Protected : Reason::Damaged, {}, {}};
    const ClosingDocument document(std::move(loaded));
    m_progress(LoadedPercent);
    return store(document.get(), order);
}

DocumentExport::Document DocumentExport::load(const QString &path, bool &isProtected)
{
    const rtl::Reference<PasswordRefusal> refusal(new PasswordRefusal);
    const Reference<css::task::XInteractionHandler> questions(refusal.get());
    const Reference<css::task::XStatusIndicator> progress(
        new ProgressIndicator(m_progress, 0, LoadedPercent));
    Document document;
    try {
        document = m_desktop->loadComponentFromURL(
            UnoValues::fileAddress(path), "_blank", 0,
            sequence({property("Hidden", true), property("ReadOnly", true),
                      property("Silent", true),
                      property("MacroExecutionMode", css::document::MacroExecMode::NEVER_EXECUTE),
                      property("UpdateDocMode", css::document::UpdateDocMode::NO_UPDATE),
                      property("InteractionHandler", questions),
                      property("StatusIndicator", progress)}));
    } catch (const css::lang::DisposedException &) {
        throw;
    } catch (const css::uno::Exception &error) {
        qWarning("not loaded: %ls", qUtf16Printable(UnoValues::text(error.Message)));
    }
    isProtected = isProtected || refusal->wasAsked();
    return document;
}

WorkerResult DocumentExport::store(const Document &document, const ExportOrder &order)
{
    const auto filter = ExportFilter::nameFor(document);
    const Reference<css::frame::XStorable> storable(document, css::uno::UNO_QUERY);
    if (filter.isEmpty() || !storable.is())
        return {Reason::UnknownFormat, {}, {}};
    const Reference<css::task::XStatusIndicator> progress(
        new ProgressIndicator(m_progress, LoadedPercent, 100));
    try {
        storable->storeToURL(UnoValues::fileAddress(order.output),
                             sequence({property("FilterName", filter),
                                       property("FilterData", ExportFilter::options(order.plain)),
                                       property("StatusIndicator", progress)}));
    } catch (const css::lang::DisposedException &) {
        throw;
    } catch (const css::uno::Exception &error) {
        return notStored(order.output, UnoValues::text(error.Message));
    }
    return resultOf(order.output);
}

} // namespace Quorlin
