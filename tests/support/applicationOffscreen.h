// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QApplication>

#include <memory>

#ifdef __SANITIZE_ADDRESS__
#include <sanitizer/lsan_interface.h>
#endif

namespace test
{
/// An application for a program without a display; QT_QPA_PLATFORM has been set. The offscreen
/// platform gives nothing back of what it makes here, which a search for leaks is not to tell.
template <typename Application = QApplication>
std::unique_ptr<Application> applicationOffscreen(int &argc, char **argv)
{
#ifdef __SANITIZE_ADDRESS__
    const __lsan::ScopedDisabler disabler;
#endif
    return std::make_unique<Application>(argc, argv);
}
} // namespace test
