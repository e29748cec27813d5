#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Brings the texts of the sources into the files of translations, where they wait as unfinished.
# A new language: an empty file translations/velmora_CODE.ts, and this.
set -euo pipefail
cd "$(dirname "$0")/.."
PATH=/usr/lib/qt5/bin:$PATH # where Debian keeps the tools of Qt 5

update() { # FILE SOURCES
    local code=${1##*_}
    code=${code%.ts}
    local only=()
    [ "$code" = en ] && only=(-pluralonly) # of which the sources have the rest
    lupdate -silent -locations none -no-obsolete "${only[@]}" "$2" \
        -source-language en -target-language "$code" -ts "$1" 2>/dev/null
}

for file in translations/velmora_*.ts; do update "$file" host; done
for file in translations/ZephrinNano_*.ts; do update "$file" plugins/device/ZephrinNano/source; done
grep -c 'type="unfinished"' translations/*.ts || true
