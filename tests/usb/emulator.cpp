// SPDX-License-Identifier: GPL-3.0-or-later
// Plugs an emulated receiver into the kernel's virtual USB controller until it is killed.
// usage: usb-emulator PORT SERIAL count BYTES_PER_SECOND | PORT SERIAL RECORDING SPEED
#include "CountingSource.h"
#include "EmulatedChip.h"
#include "ReceiverSource.h"

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>

int main(int argc, char **argv)
{
    if (argc != 5) {
        std::fprintf(stderr,
            "usage: %s PORT SERIAL count BYTES_PER_SECOND | PORT SERIAL RECORDING SPEED\n",
            argv[0]);
        return 2;
    }
    std::unique_ptr<ByteSource> source;
    if (std::string(argv[3]) == "count")
        source = std::make_unique<CountingSource>(std::atof(argv[4]));
    else
        source = std::make_unique<ReceiverSource>(argv[3], std::atof(argv[4]));
    UsbipSocket socket;
    std::string error;
    if (!socket.attach(unsigned(std::atoi(argv[1])), error)) {
        std::fprintf(stderr, "%s\n", error.c_str());
        return 1;
    }
    EmulatedChip(socket, *source, argv[2]).run();
    return 0;
}
