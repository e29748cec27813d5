#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Listens through a sound server of its own and looks for gaps in what came out.

A PulseAudio with a null sink is started for the check (packages pulseaudio, pulseaudio-utils), the
receiver plays its built-in band there, and the sink's monitor is recorded. Silence of half a
millisecond or more is a gap: the band's noise leaves none.

    cmake --build --preset release --target sound_check
    scripts/check-sound.py [--seconds 300] [--clock 200] [--build build/release] [--card-rate 48000]

--clock lets the receiver's crystal run so many millionths fast. Exit status 1 if there was a gap.
"""

import argparse
import array
import math
import os
import pathlib
import subprocess
import sys
import tempfile
import time

RATE_HZ = 48000
SHORTEST_GAP = RATE_HZ // 2000  # samples of silence
START_SECONDS = 30  # the server and the receiver have to come up within


def options():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--seconds", type=float, default=300.0)
    parser.add_argument("--clock", type=float, default=0.0, help="millionths")
    parser.add_argument("--build", type=pathlib.Path, default=pathlib.Path("build/release"))
    parser.add_argument("--card-rate", type=int, default=RATE_HZ, help="hertz")
    return parser.parse_args()


def wait_for(condition, what):
    for _ in range(START_SECONDS * 10):
        if condition():
            return
        time.sleep(0.1)
    sys.exit(f"{what} did not come up")


def receive(given, folder):
    """Runs server, recorder and receiver; returns the receiver's status and the recording."""
    environment = {**os.environ, "XDG_RUNTIME_DIR": folder, "HOME": folder}
    environment.pop("PULSE_SERVER", None)
    server = subprocess.Popen(
        ["pulseaudio", "-n", "--exit-idle-time=-1", "--daemonize=no", "--log-level=error",
         "-L", "module-native-protocol-unix",
         "-L", f"module-null-sink sink_name=ear format=float32le rate={given.card_rate}"],
        env=environment, stderr=subprocess.DEVNULL)
    path = os.path.join(folder, "monitor.raw")
    try:
        info = ["pactl", "info"]
        wait_for(lambda: subprocess.run(info, env=environment, capture_output=True).returncode == 0,
                 "the sound server")
        with open(path, "wb") as file:
            recorder = subprocess.Popen(
                ["parec", "-d", "ear.monitor", f"--rate={RATE_HZ}", "--channels=2",
                 "--format=float32le", "--raw", "--latency-msec=100"], env=environment, stdout=file)
            # 7.105 MHz, a voice; the noise of the band between its words.
            command = [given.build / "tools/sound_check", "--headless", "--rate", "192000",
                       "--seconds", str(given.seconds), "--settings", os.path.join(folder, "ini"),
                       "--plugin", given.build / "plugins/device/ZephrinNano/source/libZephrinNano.so",
                       "--d2xx", given.build / "virtual_receiver/libftd2xx.so"]
            if given.clock:
                command += ["--fault", f"clock:{given.clock:g}"]
            status = subprocess.run(command, env=environment).returncode
            recorder.terminate()
            recorder.wait()
    finally:
        server.terminate()
        server.wait()
    samples = array.array("f")
    samples.frombytes(pathlib.Path(path).read_bytes())
    return status, samples[::2]


def gaps_of(samples, first, last):
    gaps, silent = [], 0
    for at in range(first, last):
        if samples[at] == 0.0:
            silent += 1
            continue
        if silent >= SHORTEST_GAP:
            gaps.append(((at - silent) / RATE_HZ, silent / RATE_HZ))
        silent = 0
    return gaps


def decibels(ratio):
    return 20.0 * math.log10(ratio) if ratio > 0.0 else -200.0


def main():
    given = options()
    with tempfile.TemporaryDirectory() as folder:
        status, samples = receive(given, folder)
    heard = [at for at, value in enumerate(samples) if value != 0.0]
    if status == 2 or not heard:
        sys.exit("nothing was heard")
    first, last = heard[0], heard[-1]
    gaps = gaps_of(samples, first, last)
    power = sum(samples[at] ** 2 for at in range(first, last)) / (last - first)
    print(f"heard {(last - first) / RATE_HZ:.1f} s, rms {decibels(math.sqrt(power)):.1f} dBFS, "
          f"peak {decibels(max(abs(value) for value in samples)):.1f} dBFS, {len(gaps)} gaps")
    for begin, length in gaps[:20]:
        print(f"  at {begin:.3f} s: {length * 1e3:.1f} ms")
    sys.exit(1 if status or gaps else 0)


if __name__ == "__main__":
    main()
