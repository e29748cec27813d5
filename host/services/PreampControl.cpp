// SPDX-License-Identifier: GPL-3.0-or-later
#include "services/PreampControl.h"

#include "host_interfaces/DeviceFunctionsAbstract.h"

#include <algorithm>
#include <cassert>
#include <cmath>

namespace host
{
PreampControl::PreampControl(const Limits &limits, QObject *parent)
    : QObject(parent), m_limits(limits), m_db(std::clamp(0.0f, limits.minimumDb, limits.maximumDb))
{
    assert(limits.stepDb > 0.0f);
    m_clock.start();
}

PreampControl::Limits PreampControl::limitsOf(DeviceFunctionsAbstract &functions)
{
    return {float(functions.minimumPreamp()), float(functions.maximumPreamp()),
        float(functions.stepPreamp())};
}

void PreampControl::setDb(float db)
{
    if (!std::isfinite(db))
        return;
    const float stepped = std::round(db / m_limits.stepDb) * m_limits.stepDb + 0.0f; // never -0
    const float limited = std::clamp(stepped, m_limits.minimumDb, m_limits.maximumDb);
    if (limited == m_db)
        return;
    m_db = limited;
    Q_EMIT preampValueChanged(m_db);
}

void PreampControl::applyDelta(int deltaDb)
{
    const float before = m_db;
    setDb(before + float(deltaDb));
    m_steps.push_back({double(m_clock.nsecsElapsed()) * 1e-9, deltaDb, before, m_db});
    if (m_steps.size() > kMaxSteps)
        m_steps.pop_front();
}
} // namespace host
