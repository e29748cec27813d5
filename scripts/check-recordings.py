#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Receives real recordings and lets real decoders judge what came out.

  check-recordings.py BUILD TOOLS_DIR DATA_DIR [--only NAME] [--rate HZ ...] [--keep DIR]

Each recording is put on the air in a scene of its own (TOOLS_DIR/make_scenes.py), received by
BUILD/host/velmora-host in a free run, and scored by the same decoder (TOOLS_DIR/clients.py) as the
recording itself. The folders may also be given as ZEPHRIN_BUILD, ZEPHRIN_TOOLS and ZEPHRIN_DATA.
Needs python3-numpy, python3-scipy and the decoders' packages; says which are missing. Does nothing
where the folders are not there. A scene at 3.072 MHz takes about 1 GB in the temporary folder.
"""
import argparse
import glob
import json
import os
import shutil
import subprocess
import sys
import tempfile
import time
from dataclasses import dataclass, field


@dataclass
class Case:
    """Recordings that are sent, received and scored in one way."""
    name: str
    files: str                # below DATA_DIR
    scene: str                # of make_scenes.py
    client: str               # of clients.py
    program: str              # that the client runs
    package: str              # Debian package of the program
    mode: str
    filter: str
    dial_hz: float
    allowed_loss: int         # of what the decoder finds in the recording itself
    start_s: float = 0.0      # where the recording begins in the scene
    scene_options: list = field(default_factory=list)


CASES = [
    Case('FT8', 'ft8/*.wav', 'ft8', 'ft8', 'jt9', 'wsjtx', 'USB', '100:3500', 14.074e6,
         allowed_loss=1, start_s=1.0),
]

# Device rate, and where in the band the station stands: far from the centre, never on it.
OFFSETS_HZ = {192000: 10e3, 1536000: -310e3, 3072000: 920e3}


def arguments():
    parser = argparse.ArgumentParser(description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument('build', nargs='?', default=os.environ.get('ZEPHRIN_BUILD'))
    parser.add_argument('tools', nargs='?', default=os.environ.get('ZEPHRIN_TOOLS'))
    parser.add_argument('data', nargs='?', default=os.environ.get('ZEPHRIN_DATA'))
    parser.add_argument('--only', help='name of one case')
    parser.add_argument('--rate', type=int, nargs='+', choices=sorted(OFFSETS_HZ),
                        default=sorted(OFFSETS_HZ))
    parser.add_argument('--keep', help='folder for the received audio and the reports')
    return parser.parse_args()


def missing_packages(cases):
    missing = {c.package for c in cases if not shutil.which(c.program)}
    for module in ('numpy', 'scipy'):
        if subprocess.run(['/usr/bin/python3', '-c', 'import ' + module],
                          stderr=subprocess.DEVNULL).returncode:
            missing.add('python3-' + module)
    return sorted(missing)


def run(command):
    done = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)
    if done.returncode:
        raise RuntimeError('%s: %s' % (os.path.basename(command[0]), done.stderr.strip()[-300:]))
    return done.stdout


def score(args, case, wav, *options):
    client = os.path.join(args.tools, 'clients.py')
    return json.loads(run(['/usr/bin/python3', client, case.client, wav, *options]))['score']


def receive(args, case, recording, rate, folder):
    """Scene, reception, score and report of one recording at one rate."""
    offset = OFFSETS_HZ[rate]
    scene, wav, report = (os.path.join(folder, n) for n in ('scene.f64', 'out.wav', 'report.json'))
    run(['/usr/bin/python3', os.path.join(args.tools, 'make_scenes.py'), case.scene,
         '--rate', str(rate), '--offset', str(offset), '--wav', recording, '--out', scene,
         '--truth', os.path.join(folder, 'scene.json'), *case.scene_options])
    center = case.dial_hz - offset
    run([os.path.join(args.build, 'host', 'velmora-host'), '--headless', '--free-run',
         '--scene', scene, '--scene-rate', str(rate), '--scene-frequency', str(center),
         '--rate', str(rate), '--center', str(center), '--tune', str(case.dial_hz),
         '--mode', case.mode, '--filter', case.filter, '--out', wav, '--report', report])
    os.remove(scene)
    with open(report) as file:
        return score(args, case, wav, '--start', str(case.start_s)), json.load(file)


def keep(args, folder, label):
    os.makedirs(args.keep, exist_ok=True)
    for name in ('out.wav', 'report.json'):
        shutil.copy(os.path.join(folder, name), os.path.join(args.keep, label + '-' + name))


def check(args, case):
    """Prints a line for each recording and rate; returns the number of failures."""
    failures = 0
    for recording in sorted(glob.glob(os.path.join(args.data, case.files))):
        label = os.path.splitext(os.path.basename(recording))[0]
        reference = score(args, case, recording)
        for rate in args.rate:
            began = time.time()
            with tempfile.TemporaryDirectory() as folder:
                got, report = receive(args, case, recording, rate, folder)
                if args.keep:
                    keep(args, folder, '%s-%s-%d' % (case.name, label, rate))
            good = got >= reference - case.allowed_loss and report['iq']['dropped_blocks'] == 0
            failures += not good
            print('%-6s %-20s %8d %9d %9d %8d %9.1f %7.0f  %s' % (
                case.name, label, rate, reference, got, report['iq']['dropped_blocks'],
                report['time']['real_time_factor'], time.time() - began,
                'ok' if good else 'FAILED'), flush=True)
    return failures


def main():
    args = arguments()
    for folder in (args.build, args.tools, args.data):
        if not folder or not os.path.isdir(folder):
            print('skipped: give the folders of the build, the tools and the recordings')
            return 0
    cases = [c for c in CASES if args.only in (None, c.name)]
    missing = missing_packages(cases)
    if missing:
        print('missing Debian packages: ' + ' '.join(missing), file=sys.stderr)
        return 2
    print('%-6s %-20s %8s %9s %9s %8s %9s %7s' % (
        'case', 'recording', 'rate', 'original', 'received', 'dropped', 'x real t.', 'seconds'))
    failures = sum(check(args, case) for case in cases)
    print('all as good as the originals' if not failures else '%d failed' % failures)
    return 1 if failures else 0


if __name__ == '__main__':
    sys.exit(main())
