// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "scenes/Scene.h"

#include <memory>

namespace vr
{
/// The band that needs no file: several stations around 7.1 MHz. docs/scenes.md lists them.
std::shared_ptr<Scene> makeBuiltinScene();
} // namespace vr
