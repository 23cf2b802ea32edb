#pragma once

#include "tool/Delivery.h"
#include "tool/Options.h"
#include "tool/Report.h"

namespace Quorlin {

/// Tells without converting what a run would come to, as far as that shows beforehand.
///
/// A document gets the name that its result would have, or the reason why there would be none:
/// the component does not take it, or the result may not be written. Nothing is made or
/// changed.
namespace Forecast {

/// @param report of a dry run, with its documents, those that were refused already included.
void make(Report &report, const Options &options, Delivery &delivery);

} // namespace Forecast

} // namespace Quorlin
