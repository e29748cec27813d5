// SPDX-License-Identifier: GPL-3.0-or-later
// What a client of rig control may say, line by line.
#include "FuzzInput.h"
#include "host/rig/FakeRig.h"
#include "rig/RigConnection.h"
#include "rig/RigSession.h"

#include <cmath>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    using fuzz::require;
    test::FakeRig rig;
    host::RigSession session(rig);
    fuzz::Input input(data, size);
    std::string_view rest = input.text();
    while (!rest.empty() && !session.isOver()) {
        const auto line = rest.substr(
            0, std::min(rest.find('\n'), std::size_t(host::RigConnection::kLongestLine)));
        rest.remove_prefix(std::min(rest.size(), line.size() + 1));
        const QByteArray answer = session.answer(QByteArray(line.data(), int(line.size())));
        require(answer.isEmpty() || answer.endsWith('\n'), "an answer is whole lines");
        for (const host::Vfo &vfo : rig.vfos)
            require(std::isfinite(vfo.frequencyHz), "a receiver is tuned to a number");
    }
    return 0;
}
