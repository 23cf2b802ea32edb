#pragma once

#include "component/backends/worker/WorkerLoop.h"

#include <QString>

#include <com/sun/star/frame/XDesktop2.hpp>
#include <com/sun/star/lang/XComponent.hpp>

#include <functional>

namespace Quorlin {

/// What is to be exported, with absolute paths.
struct ExportOrder
{
    QString input;
    QString output;
    bool plain = false; ///< leave out what the result can do without
};

/// Opens one document in the engine, writes it as PDF and closes it again.
class DocumentExport
{
public:
    using Desktop = css::uno::Reference<css::frame::XDesktop2>;
    using Document = css::uno::Reference<css::lang::XComponent>;

    /// @param progress takes per cent, from any thread.
    DocumentExport(Desktop desktop, std::function<void(int)> progress);

    /// @return done with "pages", or why not.
    /// @throws css::lang::DisposedException when the engine is gone.
    [[nodiscard]] WorkerResult run(const ExportOrder &order);

private:
    [[nodiscard]] Document load(const QString &path, bool &isProtected);
    [[nodiscard]] WorkerResult store(const Document &document, const ExportOrder &order);

    Desktop m_desktop;
    std::function<void(int)> m_progress;
};

} // namespace Quorlin
