#pragma once

#include "skin/controls/KelLabel.h"

#include "Pixels.h"

/// The label that tests of its picture look at.
namespace Quorlin::LabelSample {

constexpr int Width = 160;
constexpr int Height = 60;

inline void prepare(KelLabel &label, const char *caption = "Hamburg")
{
    label.resize(Width, Height);
    label.Font(Pixels::font());
    label.TextColor(0);
    label.Caption(QString::fromUtf8(caption));
}

} // namespace Quorlin::LabelSample
