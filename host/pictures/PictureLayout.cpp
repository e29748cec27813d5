// SPDX-License-Identifier: GPL-3.0-or-later
#include "PictureLayout.h"

#include <algorithm>

namespace host
{
namespace
{
constexpr QSize kSmallest{320, 200};
constexpr QSize kLargest{8192, 8192};

// Of the picture's height; 20 pixels at the default size, still legible at half of it.
constexpr int kTextsInHeight = 45;
constexpr int kSmallestText = 9;
constexpr int kLargestText = 60;

// Margins in text heights.
constexpr double kLeft = 5.0;  // "-140" and the turned caption
constexpr double kRight = 2.5; // half a number of the bottom axis
constexpr double kTop = 2.2;
constexpr double kBottom = 3.6;
constexpr double kBarDistance = 1.2;
constexpr double kBarWidth = 1.2;
constexpr double kRightWithBar = 8.0;
constexpr double kRow = 1.4;
} // namespace

PictureLayout::PictureLayout(QSize wanted, int labelRows, bool hasColourBar)
    : size(wanted.expandedTo(kSmallest).boundedTo(kLargest)),
      textHeight(std::clamp(size.height() / kTextsInHeight, kSmallestText, kLargestText)),
      rowHeight(int(kRow * textHeight))
{
    const auto texts = [this](double count) { return int(count * textHeight); };
    const int left = texts(kLeft);
    const int top = texts(kTop) + labelRows * rowHeight;
    const int right = size.width() - texts(hasColourBar ? kRightWithBar : kRight);
    plot = QRect(left, top, right - left, std::max(1, size.height() - texts(kBottom) - top));
    if (hasColourBar)
        colourBar = QRect(right + texts(kBarDistance), top, texts(kBarWidth), plot.height());
}
} // namespace host
