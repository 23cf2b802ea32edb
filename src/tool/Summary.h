#pragma once

#include <QString>
#include <QStringList>

namespace Quorlin {

struct Report;

/// What a run came to, for people.
namespace Summary {

/// One line: how many documents came to what, how large the results are and how long it took.
[[nodiscard]] QString totalsOf(const Report &report);

/// A table with a heading, a line for each document and the totals; nothing in it steers a
/// terminal.
/// @param width columns that are there, brought to at least 40; 0 for as many as are needed.
[[nodiscard]] QStringList linesOf(const Report &report, int width);

} // namespace Summary

} // namespace Quorlin
