// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>

#include <optional>

namespace host
{
/// The first of the files that exists, each given relative to the folder of the running program:
/// what is installed with it, or built with it. Absolute and without links.
std::optional<QString> findBesideProgram(const QStringList &files);
} // namespace host
