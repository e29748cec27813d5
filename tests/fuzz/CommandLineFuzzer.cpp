// SPDX-License-Identifier: GPL-3.0-or-later
// Arguments of the program, one a line.
#include "FuzzInput.h"
#include "QtProgram.h"
#include "settings/CommandLine.h"

#include <cmath>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    using fuzz::require;
    static const bool started = (fuzz::beQtProgram<QCoreApplication>(), true);
    (void)started;
    fuzz::Input input(data, size);
    const std::string_view text = input.text();
    QStringList arguments{"velmora-host"};
    if (!text.empty())
        arguments += QString::fromUtf8(text.data(), int(text.size())).split('\n');
    const auto result = host::readCommandLine(arguments);
    if (const auto *error = std::get_if<host::UsageError>(&result))
        require(!error->text.isEmpty() && !error->text.contains('\n'), "a refusal is one line");
    if (const auto *settings = std::get_if<host::HostSettings>(&result)) {
        require(std::abs(settings->tuneHz - settings->centerHz) <= settings->deviceRateHz / 2.0,
            "the station is within reach");
        require(std::isfinite(settings->seconds) && settings->seconds >= 0.0, "a run has a length");
    }
    return 0;
}
