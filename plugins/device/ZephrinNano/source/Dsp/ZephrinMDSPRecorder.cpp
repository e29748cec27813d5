// SPDX-License-Identifier: GPL-3.0-or-later
#include "Dsp/ZephrinMDSP.h"

#include "vm_library/source/log/Log.h"

namespace
{
// Log readers look for this text, which the compiler spells in another way.
constexpr auto kBlockSignature = "void ZephrinMDSP::dspProcess(std::vector<COMPLEX> &)";
} // namespace

void ZephrinMDSP::feedRecorder(std::vector<COMPLEX> &block)
{
    if (!m_iqFile->isOpen())
        return;
    if (!m_iqFile->write(block))
        vm::log::debug(kBlockSignature, " failed to write IQ to file");
}

bool ZephrinMDSP::iqRecorderStart(const QString &path)
{
    Lock lock(m_mutex);
    m_iqFile->setSampleRate(m_sampleRate);
    return m_iqFile->open(path);
}

void ZephrinMDSP::iqRecorderStop()
{
    Lock lock(m_mutex);
    m_iqFile->close();
}

void ZephrinMDSP::setIQFormat(vm::file::IQFile::Format format)
{
    Lock lock(m_mutex);
    m_iqFile->setFormat(format);
}
