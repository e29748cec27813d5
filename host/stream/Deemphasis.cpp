// SPDX-License-Identifier: GPL-3.0-or-later
#include "stream/Deemphasis.h"

#include <cmath>

namespace host
{
namespace
{
double poleOf(double microseconds, double rateHz)
{
    return microseconds > 0.0 ? std::exp(-1e6 / (microseconds * rateHz)) : 0.0;
}
} // namespace

Deemphasis::Deemphasis(double oldUs, double newUs, double rateHz)
    : m_oldPole(poleOf(oldUs, rateHz)), m_newPole(poleOf(newUs, rateHz)),
      m_gain((1.0 - m_newPole) / (1.0 - m_oldPole))
{ }

void Deemphasis::process(float *interleaved, std::size_t frames)
{
    for (std::size_t n = 0; n < 2 * frames; ++n) {
        const double x = double(interleaved[n]);
        double &last = m_in[n % 2];
        double &y = m_out[n % 2];
        y = m_gain * (x - m_oldPole * last) + m_newPole * y;
        last = x;
        interleaved[n] = float(y);
    }
}
} // namespace host
