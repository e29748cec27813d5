// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

/// CRC-32 in its common reflected form (ISO 3309, ITU-T V.42): polynomial 0xEDB88320, start value
/// 0xFFFFFFFF, final inversion. Guards the calibration page. A length of 0 gives 0. Any thread.
unsigned int crc32(unsigned char *data, unsigned int length);
