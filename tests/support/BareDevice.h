// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host_interfaces/DeviceAbstract.h"

#include <QStringList>

namespace test
{
/// A device with no functions: everything that has a default keeps it.
class BareDevice : public DeviceAbstract
{
public:
    using DeviceAbstract::DeviceAbstract;
    void setCwParam(const SDR::CwParam &) override { }
    SDR::CwParam cwParam() const override { return {}; }
    bool open() override { return true; }
    void close() override { calls << "close"; }
    bool start() override { return true; }
    void stop() override { calls << "stop"; }
    void retranslate() override { calls << "retranslate"; }
    DeviceFunctionsAbstract *getAvalibleFunctions() override { return nullptr; }
    bool isOpen() override { return false; }
    bool isStart() override { return false; }
    SpectrumView receiverSpectrum(unsigned long) override { return {}; }
    SpectrumView transmitterSpectrum(unsigned long) override { return {}; }
    SpectrumView bandscopeSpectrum() override { return {}; }
    void emitAllSignals() override { }

    QStringList calls;
};
} // namespace test
