// SPDX-License-Identifier: GPL-3.0-or-later
#include <QApplication>
#include <gtest/gtest.h>

#include <memory>

#ifdef __SANITIZE_ADDRESS__
#include <sanitizer/lsan_interface.h>
#endif

namespace
{
/// The offscreen platform gives nothing back of what it makes here.
std::unique_ptr<QApplication> makeApplication(int &argc, char **argv)
{
#ifdef __SANITIZE_ADDRESS__
    const __lsan::ScopedDisabler disabler;
#endif
    return std::make_unique<QApplication>(argc, argv);
}
} // namespace

/// For programs that test widgets: no display is needed.
int main(int argc, char **argv)
{
    testing::InitGoogleTest(&argc, argv);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const auto application = makeApplication(argc, argv);
    return RUN_ALL_TESTS();
}
