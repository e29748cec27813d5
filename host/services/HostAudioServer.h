// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host_interfaces/AudioServerAbstract.h"

namespace host
{
/// Where the engine would push demodulated audio for listeners elsewhere. There are none.
class HostAudioServer : public AudioServerAbstract
{
    Q_OBJECT

public:
    using AudioServerAbstract::AudioServerAbstract;

    bool isOpen(int) override { return false; }
    void write(int, COMPLEX *, int) override { }

    void reserved1() override { }
    void reserved4() override { }
    void reserved5() override { }
    void reserved6() override { }

private:
    void run() override { } // sends nothing, so its thread is never started
};
} // namespace host
