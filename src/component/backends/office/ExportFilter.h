#pragma once

#include <com/sun/star/beans/PropertyValue.hpp>
#include <com/sun/star/lang/XComponent.hpp>

namespace Quorlin::ExportFilter {

/// The engine's PDF filter for an open document; empty when it has none.
[[nodiscard]] rtl::OUString nameFor(const css::uno::Reference<css::lang::XComponent> &document);

/// What the filter is told. @param plain only what the result cannot do without.
[[nodiscard]] css::uno::Sequence<css::beans::PropertyValue> options(bool plain);

} // namespace Quorlin::ExportFilter
