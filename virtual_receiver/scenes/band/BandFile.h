// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "BandDescription.h"
#include "scenes/Scene.h"

#include <istream>
#include <memory>
#include <string>

namespace vr
{
/// Reads the description of a band; docs/scenes.md tells its language. name stands in messages,
/// folder is where relative audio file names start. Nothing with a reason "name:line: ..." in
/// error.
std::optional<BandDescription> readBand(
    std::istream &text, const std::string &name, const std::string &folder, std::string &error);

/// The scene of a band file; null with a reason in error.
std::shared_ptr<Scene> loadBandScene(const std::string &path, std::string &error);
} // namespace vr
