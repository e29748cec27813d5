// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "vm_library/source/file/IQFile.h"

#include <QString>

#include <cstdint>
#include <optional>

namespace host
{
/// Makes the header of a finished IQ recording tell what is in the file.
class IqFileRepair
{
public:
    /// Cuts off a part of a sample and corrects the sizes where they differ. Gives the samples in
    /// the file; nothing if it cannot be read or has no header.
    static std::optional<std::uint64_t> repair(
        const QString &path, vm::file::IQFile::Format layout);
};
} // namespace host
