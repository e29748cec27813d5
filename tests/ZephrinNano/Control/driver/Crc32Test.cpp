// SPDX-License-Identifier: GPL-3.0-or-later
#include "Control/driver/crc32.h"

#include <gtest/gtest.h>
#include <string>

namespace
{
TEST(Crc32Test, KnownValues)
{
    const auto crcOf = [](std::string text) {
        return crc32(reinterpret_cast<unsigned char *>(text.data()), unsigned(text.size()));
    };
    EXPECT_EQ(crcOf("123456789"), 0xCBF43926u); // the check value that catalogues give
    EXPECT_EQ(crcOf(std::string(32, '\0')), 0x190A55ADu);
    EXPECT_EQ(crcOf(""), 0u);
}
} // namespace
