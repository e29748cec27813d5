// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/panorama/TraceRaster.h"
#include "window/panorama/WaterfallImage.h"

#include <QPainter>
#include <benchmark/benchmark.h>

#include <random>

namespace
{
constexpr std::size_t kBins = 4096;
constexpr QSize kHalfOfScreen{1600, 300};
constexpr QSize kTallScreen{3840, 1600};

/// Noise as of one transform, 100 dB over the height, and a carrier every 200 columns.
std::vector<float> noiseDb(std::size_t count, float meanDb)
{
    std::mt19937 random{1};
    std::exponential_distribution<float> power;
    std::vector<float> levels(count);
    for (std::size_t i = 0; i < count; ++i)
        levels[i] =
            meanDb + 10.0f * std::log10(power(random) + 1e-6f) + (i % 200 == 100 ? 60.0f : 0.0f);
    return levels;
}

void BM_TraceRaster(benchmark::State &state) // items: pixels
{
    QImage picture(kHalfOfScreen, QImage::Format_RGB32);
    auto rows = noiseDb(std::size_t(picture.width()), -80.0f);
    for (float &row : rows)
        row *= float(-picture.height()) / 100.0f;
    host::TraceRaster raster;
    for (auto _ : state) {
        raster.draw(picture, rows, {0xff40c0ff, 0x4040c0ff, 1.2});
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * picture.width() * picture.height());
}
BENCHMARK(BM_TraceRaster);

void BM_WaterfallRedraw(benchmark::State &state) // items: pixels
{
    const QSize size = state.range(0) ? kTallScreen : kHalfOfScreen;
    host::WaterfallHistory history(size.height());
    const auto line = noiseDb(kBins, -120.0f);
    for (int i = 0; i < size.height(); ++i)
        history.add(line, {7.1e6, 192e3}, i);
    host::WaterfallImage image(history);
    image.setSize(size);
    QImage screen(size, QImage::Format_RGB32);
    QPainter painter(&screen);
    double lowHz = 7.01e6;
    for (auto _ : state) {
        image.setBand(lowHz += 10.0, 7.19e6);
        while (!image.paint(painter, {}, 1.0))
            benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * size.width() * size.height());
}
BENCHMARK(BM_WaterfallRedraw)->Arg(0)->Arg(1);

void BM_WaterfallPaint(benchmark::State &state) // nothing but a line is new; items: pixels
{
    host::WaterfallHistory history(kHalfOfScreen.height());
    const auto line = noiseDb(kBins, -120.0f);
    host::WaterfallImage image(history);
    image.setSize(kHalfOfScreen);
    image.setBand(7.01e6, 7.19e6);
    QImage screen(kHalfOfScreen, QImage::Format_RGB32);
    QPainter painter(&screen);
    for (auto _ : state) {
        history.add(line, {7.1e6, 192e3}, 0.0);
        image.addNewest();
        image.paint(painter, {}, 1.0);
    }
    state.SetItemsProcessed(state.iterations() * kHalfOfScreen.width() * kHalfOfScreen.height());
}
BENCHMARK(BM_WaterfallPaint);
} // namespace
