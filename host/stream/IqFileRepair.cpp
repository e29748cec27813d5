// SPDX-License-Identifier: GPL-3.0-or-later
#include "stream/IqFileRepair.h"

#include <QFile>

#include <cstring>

namespace host
{
namespace
{
using vm::file::IQFile;

/// Where a layout has the bytes of its samples; none has a field in the layout "VelmoraSDR2".
std::optional<qint64> sizeField(IQFile::Format layout)
{
    if (layout == IQFile::VelmoraSDR2)
        return std::nullopt;
    return qint64(IQFile::headerBytes(layout)) - qint64(sizeof(std::uint32_t));
}

bool put(QFile &file, qint64 at, std::uint32_t value)
{
    return file.seek(at)
        && file.write(reinterpret_cast<const char *>(&value), sizeof value) == qint64(sizeof value);
}
} // namespace

std::optional<std::uint64_t> IqFileRepair::repair(const QString &path, IQFile::Format layout)
{
    QFile file(path);
    IQFile::WaveHeader header;
    const auto headerBytes = qint64(IQFile::headerBytes(layout));
    if (!file.open(QIODevice::ReadWrite | QIODevice::ExistingOnly) || file.size() < headerBytes
        || file.read(reinterpret_cast<char *>(&header), sizeof header) != qint64(sizeof header)
        || std::memcmp(header.riff, "RIFF", sizeof header.riff) != 0)
        return std::nullopt;
    const qint64 samples = (file.size() - headerBytes) / IQFile::kSampleBytes;
    const qint64 bytes = samples * IQFile::kSampleBytes;
    const std::uint32_t length = std::uint32_t(bytes) + IQFile::lengthOverhead(layout);
    if (file.size() == headerBytes + bytes && header.length == length)
        return std::uint64_t(samples);
    const auto field = sizeField(layout);
    const bool isGood = file.resize(headerBytes + bytes)
        && put(file, offsetof(IQFile::WaveHeader, length), length)
        && (!field || put(file, *field, std::uint32_t(bytes)));
    return isGood ? std::optional(std::uint64_t(samples)) : std::nullopt;
}
} // namespace host
