// SPDX-License-Identifier: GPL-3.0-or-later
// Without the fuzzing engine: gives the files of the folders that are named, one after the other,
// to the fuzzer that this is linked with.
#include "FuzzInput.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

int main(int argc, char **argv)
{
    int inputs = 0;
    for (int i = 1; i < argc; ++i) {
        if (!std::filesystem::is_directory(argv[i]))
            continue;
        for (const auto &entry : std::filesystem::directory_iterator(argv[i])) {
            std::ifstream file(entry.path(), std::ios::binary);
            const std::vector<char> bytes(std::istreambuf_iterator<char>(file), {});
            std::printf("%s\n", entry.path().filename().c_str());
            std::fflush(stdout); // the last name is that of the culprit
            LLVMFuzzerTestOneInput(
                reinterpret_cast<const std::uint8_t *>(bytes.data()), bytes.size());
            ++inputs;
        }
    }
    if (inputs == 0)
        std::fprintf(stderr, "no inputs\n");
    return inputs == 0;
}
