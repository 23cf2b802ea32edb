#include "component/backends/office/EngineConnection.h"

#include "component/backends/office/UnoValues.h"

#include <com/sun/star/awt/AsyncCallback.hpp>
#include <com/sun/star/bridge/UnoUrlResolver.hpp>
#include <com/sun/star/configuration/theDefaultProvider.hpp>
#include <com/sun/star/connection/NoConnectException.hpp>
#include <com/sun/star/container/XNameAccess.hpp>
#include <com/sun/star/frame/Desktop.hpp>
#include <com/sun/star/lang/XComponent.hpp>
#include <cppuhelper/bootstrap.hxx>
#include <rtl/bootstrap.hxx>

namespace Quorlin {

using css::uno::Reference;

EngineConnection::~EngineConnection()
{
    try {
        const Reference<css::lang::XComponent> local(m_local, css::uno::UNO_QUERY);
        if (local.is())
            local->dispose();
    } catch (const css::uno::RuntimeException &) {
        // What is left is freed with the process.
    }
}

bool EngineConnection::open(const QString &pipeName, const QString &bootstrap)
{
    if (!m_local.is()) {
        rtl::Bootstrap::set("URE_BOOTSTRAP", UnoValues::text(bootstrap));
        m_local = cppu::defaultBootstrap_InitialComponentContext();
    }
    const auto address = QStringLiteral("uno:pipe,name=%1;urp;StarOffice.ComponentContext");
    try {
        const auto resolver = css::bridge::UnoUrlResolver::create(m_local);
        m_engine.set(resolver->resolve(UnoValues::text(address.arg(pipeName))),
                     css::uno::UNO_QUERY_THROW);
    } catch (const css::connection::NoConnectException &) {
        return false;
    }
    m_desktop = css::frame::Desktop::create(m_engine);
    return true;
}

Reference<css::awt::XRequestCallback> EngineConnection::mainLoop() const
{
    return css::awt::AsyncCallback::create(m_engine);
}

QString EngineConnection::version() const
{
    const auto provider = css::configuration::theDefaultProvider::get(m_engine);
    const auto path =
        UnoValues::property("nodepath", rtl::OUString("/org.openoffice.Setup/Product"));
    const auto arguments = UnoValues::sequence({css::uno::Any(path)});
    const Reference<css::container::XNameAccess> product(
        provider->createInstanceWithArguments("com.sun.star.configuration.ConfigurationAccess",
                                              arguments),
        css::uno::UNO_QUERY_THROW);
    rtl::OUString version;
    product->getByName("ooSetupVersionAboutBox") >>= version;
    return UnoValues::text(version);
}

void EngineConnection::terminate()
{
    try {
        if (m_desktop.is())
            m_desktop->terminate();
    } catch (const css::uno::RuntimeException &) {
        // It ended before it could answer, which is what was asked for.
    }
    m_desktop.clear();
    m_engine.clear();
}

} // namespace Quorlin
