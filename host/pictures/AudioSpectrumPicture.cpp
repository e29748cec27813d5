// SPDX-License-Identifier: GPL-3.0-or-later
#include "AudioSpectrumPicture.h"

#include "PictureFile.h"
#include "SpectrumPicture.h"

#include <algorithm>
#include <cmath>

namespace host
{
namespace
{
constexpr float kSameDb = 0.05f;

bool isSame(const std::vector<float> &left, const std::vector<float> &right)
{
    return std::equal(left.begin(), left.end(), right.begin(),
        [](float a, float b) { return std::abs(a - b) <= kSameDb; });
}
} // namespace

QImage AudioSpectrumPicture::image() const
{
    // An even number of bins, with the middle one as the centre of the axis.
    const auto bins =
        2 * std::size_t(std::ceil(AudioSpectrum::kRateHz / 2.0 / AudioSpectrum::kBinHz / 2.0));
    const double topHz = double(bins) * AudioSpectrum::kBinHz;
    std::vector<float> left = m_spectrum.left();
    std::vector<float> right = m_spectrum.right();
    left.resize(bins);
    right.resize(bins);

    SpectrumPicture picture({topHz / 2.0, topHz});
    picture.setSize(m_size);
    picture.setTitle(m_title);
    picture.setLevelCaption("Level (dBFS, 0 = sine of full scale)");
    if (isSame(left, right)) {
        picture.setLine(std::move(left), "left = right");
    } else {
        picture.setLine(std::move(left), "left");
        picture.setSecondLine(std::move(right), "right");
    }
    return picture.image();
}

bool AudioSpectrumPicture::save(const QString &path, QString *error) const
{
    if (m_spectrum.segments() == 0)
        return refusePicture(path, "too little audio for a spectrum", error);
    return savePng(image(), path, error);
}
} // namespace host
