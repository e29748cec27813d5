// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "radio/Vfo.h"

#include <QString>

namespace host
{
/// A place of the spectrum that somebody wants to find again.
struct Bookmark
{
    QString name;
    Reception reception;
    QString note;

    bool operator==(const Bookmark &) const = default;
};
} // namespace host
