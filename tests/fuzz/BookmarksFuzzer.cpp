// SPDX-License-Identifier: GPL-3.0-or-later
// Tables of bookmarks: what was understood of one is read back the same.
#include "FuzzInput.h"
#include "memory/BookmarkCsv.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    using fuzz::require;
    fuzz::Input input(data, size);
    const std::string_view text = input.text();
    const auto first = host::bookmarkcsv::read(QByteArray(text.data(), int(text.size())));
    require(
        first.error.isEmpty() || first.bookmarks.isEmpty(), "no bookmarks from what is no table");
    const auto second = host::bookmarkcsv::read(host::bookmarkcsv::write(first.bookmarks));
    require(second.error.isEmpty() && second.problems.isEmpty(), "what is written can be read");
    require(second.bookmarks == first.bookmarks, "what is written is read back");
    return 0;
}
