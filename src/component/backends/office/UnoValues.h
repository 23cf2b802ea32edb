#pragma once

#include <QString>

#include <com/sun/star/beans/PropertyValue.hpp>
#include <rtl/ustring.hxx>

#include <initializer_list>
#include <iterator>

namespace Quorlin {

/// Values on the way between this program and the office engine.
namespace UnoValues {

[[nodiscard]] rtl::OUString text(const QString &text);
[[nodiscard]] QString text(const rtl::OUString &text);

/// The address of a local file, whatever characters its name holds.
[[nodiscard]] rtl::OUString fileAddress(const QString &path);

/// A named value. @param name in ASCII.
template <typename Value>
[[nodiscard]] css::beans::PropertyValue property(const char *name, const Value &value)
{
    return {rtl::OUString::createFromAscii(name), -1, css::uno::Any(value),
            css::beans::PropertyState_DIRECT_VALUE};
}

/// Values in the form in which the engine takes lists.
template <typename Value>
[[nodiscard]] css::uno::Sequence<Value> sequence(std::initializer_list<Value> values)
{
    return {std::data(values), static_cast<sal_Int32>(values.size())};
}

} // namespace UnoValues

} // namespace Quorlin
