// SPDX-License-Identifier: GPL-3.0-or-later
#include "Control/CalibrationControl.h"

#include "vm_library/source/log/Log.h"

#include <cmath>

CalibrationControl::CalibrationControl(QObject *parent) : QObject(parent) { }

double CalibrationControl::streamPreampCoeff() const
{
    return m_userPreampCoeff + m_adminPreampCoeff - m_preamp;
}

void CalibrationControl::update()
{
    emit streamPreampCoeffChanged(streamPreampCoeff());
}

void CalibrationControl::setUserPreampCoeff(double value)
{
    set(m_userPreampCoeff, value, &CalibrationControl::userPreampCoeffChanged);
}

void CalibrationControl::setUserFreqCoeff(double value)
{
    set(m_userFreqCoeff, value, &CalibrationControl::userFreqChanged);
}

void CalibrationControl::setAdminPreampCoeff(double value)
{
    set(m_adminPreampCoeff, value, &CalibrationControl::adminPreampCoeffChanged);
}

void CalibrationControl::setAdminFreqCoeff(double value)
{
    set(m_adminFreqCoeff, value, &CalibrationControl::adminFreqChanged);
}

void CalibrationControl::setPreamp(double value)
{
    set(m_preamp, value, nullptr);
}

void CalibrationControl::set(double &member, double value, Signal changed)
{
    if (qFuzzyCompare(member, value))
        return;
    if (m_finiteOnly && !std::isfinite(value)) {
        vm::log::warning(Q_FUNC_INFO, " refused ", value);
        return;
    }
    member = value;
    if (changed)
        (this->*changed)(value);
    update();
}
