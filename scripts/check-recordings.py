#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Receives real recordings and lets real decoders judge what came out.

  check-recordings.py BUILD TOOLS_DIR DATA_DIR [--only NAME] [--rate HZ ...] [--keep DIR]
                      [--by-way-of LAYOUT]

Each recording is put on the air in a scene of its own (TOOLS_DIR/make_scenes.py), received by
BUILD/host/velmora-host in a free run, and scored by the same decoder (TOOLS_DIR/clients.py) as the
recording itself. With --by-way-of the scene is first recorded by the receiver (vsdr, wave or hdsdr) and
then received from that recording; usb: as vsdr, but played by an emulated chip in a virtual machine and
received through its kernel's USB stack (BUILD needs the target usb_tests; minutes each). The folders may also be given as ZEPHRIN_BUILD, ZEPHRIN_TOOLS and ZEPHRIN_DATA.
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
    """Recordings (or a programme of make_scenes.py) that are sent, received and scored in one way."""
    name: str
    files: str                # below DATA_DIR; empty: the scene makes its own programme
    scene: str                # of make_scenes.py
    client: str               # of clients.py
    program: str              # that the client runs
    package: str              # Debian package of the program
    mode: str
    filter: str
    dial_hz: float
    judge: str = 'count'      # count: reference less loss; bearing: degrees; least: a fixed number
    allowed_loss: float = 0
    least: float = 0.0
    start_s: float = 0.0      # where the recording begins in the scene
    scene_options: list = field(default_factory=list)
    client_options: list = field(default_factory=list)
    reference_options: list = field(default_factory=list)
    host_options: list = field(default_factory=list)
    inverted: bool = False    # the FM loop's audio falls where the frequency rises
    rates: tuple = (192000,)
    offset_hz: float = None   # from the centre; default: by rate

    def good(self, got, reference):
        if got is None:
            return False
        if self.judge == 'bearing':
            return abs((got - reference + 180.0) % 360.0 - 180.0) <= self.allowed_loss
        return got >= (self.least if self.judge == 'least' else reference - self.allowed_loss)


# A fixed gain: the gain control would flatten slow modulation.
LEVEL = ['--agc', 'off', '--agc-gain', '20']
ALL_RATES = (192000, 1536000, 3072000)
NFM = '-8000:8000'

CASES = [
    Case('FT8', 'ft8/*.wav', 'ft8', 'ft8', 'jt9', 'wsjtx', 'USB', '100:3500', 14.074e6,
         allowed_loss=1, start_s=1.0, rates=ALL_RATES, host_options=LEVEL),
    Case('FT4', 'ft4/*.wav', 'ft8', 'ft4', 'jt9', 'wsjtx', 'USB', '100:3500', 14.080e6,
         allowed_loss=1, start_s=1.0),
    # The weakest of the nine stands at the decoder's limit: it comes and goes with the file's cut.
    Case('WSPR', 'wspr/*.wav', 'ft8', 'wspr', 'wsprd', 'wsjtx', 'USB', '1000:2000', 14.0956e6,
         start_s=0.8, host_options=LEVEL),
    Case('300Bd', 'balloon/*.wav', 'ssb', 'balloon', 'minimodem', 'minimodem', 'USB', '100:3500',
         14.1e6, start_s=0.5),
    Case('VOR', 'vor/*.wav', 'am', 'vor', 'sox', 'sox', 'AM', '-12000:12000', 113.0e6,
         judge='bearing', allowed_loss=1.0, start_s=0.25, host_options=LEVEL),
    Case('VORs', 'vor/*.wav', 'am', 'vor', 'sox', 'sox', 'SAM', '-12000:12000', 113.0e6,
         judge='bearing', allowed_loss=1.0, start_s=0.25, host_options=LEVEL),
    Case('Selcal', 'selcal/*-am.wav', 'am', 'selcal', 'sox', 'sox', 'AM', '-4000:4000', 8.9e6,
         start_s=0.25, client_options=['--offset', '0'], host_options=LEVEL),
    Case('Selcals', 'selcal/*-am.wav', 'am', 'selcal', 'sox', 'sox', 'SAM', '-4000:4000', 8.9e6,
         start_s=0.25, client_options=['--offset', '0'], host_options=LEVEL),
    Case('AFSK', '', 'packet', 'packet', 'gen_packets', 'direwolf', 'NFM', NFM, 144.8e6,
         judge='least', least=20, start_s=0.0),
    Case('AFSKct', '', 'packet', 'packet', 'gen_packets', 'direwolf', 'NFM', NFM, 144.8e6,
         judge='least', least=20, scene_options=['--ctcss', '67.0']),
    # The tone squelch opens after the first packets have begun.
    Case('AFSKsql', '', 'packet', 'packet', 'gen_packets', 'direwolf', 'NFM', NFM, 144.8e6,
         judge='least', least=18, scene_options=['--ctcss', '67.0'],
         host_options=['--ctcss', '67.0']),
    Case('Satel', 'packet/*.wav', 'packet', 'packet', 'atest', 'direwolf', 'NFM', NFM, 145.8e6,
         start_s=0.5),
    Case('POCSAG', 'pager/*.flac', 'packet', 'pocsag', 'multimon-ng', 'multimon-ng', 'NFM', NFM,
         169.0e6, start_s=0.5, scene_options=['--dev', '4500'], inverted=True),
    Case('EAS', 'eas/*.bin', 'packet', 'eas', 'multimon-ng', 'multimon-ng', 'NFM', NFM, 162.4e6,
         start_s=0.5),
    # In the recording the channel is empty before 0.97 s; the scene begins it at 0.5 s.
    Case('Voice', 'nfm/*.cu8', 'iq', 'quieting', 'sox', 'sox', 'NFM', NFM, 144.5e6,
         allowed_loss=3.0, scene_options=['--iqrate', '280000', '--iqshift', '-30270'],
         client_options=['--tones', '0.7', '1.3', '1.65', '2.2']),
    Case('DCFcw', 'dcf77/*.wav', 'iq', 'dcf77', 'sox', 'sox', 'CW', '-250:250', 77.5e3,
         allowed_loss=1, start_s=0.5, reference_options=['--iq'], host_options=LEVEL),
    Case('DCFusb', 'dcf77/*.wav', 'iq', 'dcf77', 'sox', 'sox', 'USB', '100:2700', 77.5e3,
         allowed_loss=1, start_s=0.5, reference_options=['--iq'], host_options=LEVEL),
    Case('CW', '', 'cw', 'cw-mm', 'multimon-ng', 'multimon-ng', 'CW', '-250:250', 7.03e6,
         judge='least', least=0.97, scene_options=['--wpm', '22']),
    Case('CWapf', '', 'cw', 'cw-mm', 'multimon-ng', 'multimon-ng', 'CW', '-250:250', 7.03e6,
         judge='least', least=0.97, scene_options=['--wpm', '22'], host_options=['--apf']),
    Case('WFM', '', 'wfm', 'stereo', 'sox', 'sox', 'WFM', '-90000:90000', 100.0e6,
         judge='least', least=27.0, offset_hz=0.0, scene_options=['--noise', '-200']),
]

# The signal's place for modes that are tuned to a carrier beside the dial.
TUNE_SHIFT_HZ = {'DCFusb': -1000.0}

VOR_LEAD_S = 1.0

HERE = os.path.dirname(os.path.abspath(__file__))
SCENE_SAMPLE_BYTES = 16  # two doubles
USB_TAIL_S = 1.0  # of silence: a run by the clock ends before its recording and after what counts

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
    parser.add_argument('--by-way-of', dest='layout', choices=('vsdr', 'wave', 'hdsdr', 'usb'),
                        help='record the scene in this layout and receive the recording')
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


def code_of(case, recording):
    """Selective calls are named after their code."""
    return ['--text', os.path.basename(recording)[:4]] if case.client == 'selcal' else []


def part_of(case, recording, report):
    """Where the recording begins in the audio: as much later as the receiver took. Bearings are
    measured over just the length of the recording."""
    start = case.start_s + report['audio'].get('delay_ms', 0.0) / 1000.0
    if case.client != 'vor':
        return ['--start', str(start)] if case.start_s else []
    seconds = float(run(['soxi', '-D', recording]))
    return ['--start', str(start + VOR_LEAD_S), '--len', str(seconds)]


def dc_blocked(recording, wav, inverted):
    """The recording behind the receiver's own direct-current block, which turns a 30 Hz tone by 52
    degrees and a 9960 Hz one by none; synchronous AM also inverts."""
    run(['/usr/bin/python3', '-c', """
import sys
import scipy.io.wavfile as w
import scipy.signal as s
rate, x = w.read(sys.argv[1])
assert rate == 48000
y = s.lfilter([1.0, -1.0], [1.0, -0.995], x.astype(float) / 32768.0, axis=0)
w.write(sys.argv[2], rate, (float(sys.argv[3]) * y).astype('float32'))
""", recording, wav, '-1' if inverted else '1'])
    return wav


def discriminated(recording, wav):
    """What a plain discriminator behind the same filter, with the 1000 Hz range of the receiver's
    loop, makes of narrow FM in an IQ recording; with the lead of half a second that a scene has."""
    run(['/usr/bin/python3', '-c', """
import sys
import numpy as np
import scipy.io.wavfile as w
import scipy.signal as s
rate, out = 280000, 48000
b = np.fromfile(sys.argv[1], np.uint8).astype(float) - 127.5
z = (b[0::2] + 1j * b[1::2]) / 127.5
z *= np.exp(-2j * np.pi * 30270.0 / rate * np.arange(len(z)))
z = s.resample_poly(z, 6, 35)
z = s.fftconvolve(z, s.firwin(1571, 8000, fs=out), 'same')
y = np.clip(np.angle(z[1:] * z[:-1].conj()) / np.pi * out / 2, -1000.0, 1000.0) / 1000.0
w.write(sys.argv[2], out, np.r_[np.zeros(out // 2), y].astype('float32'))
""", recording, wav])
    return wav


def reference_of(args, case, recording, folder):
    if case.judge == 'least':
        return case.least
    if case.client == 'quieting':
        recording = discriminated(recording, os.path.join(folder, 'reference.wav'))
    if case.client == 'vor':
        recording = dc_blocked(recording, os.path.join(folder, 'reference.wav'),
                               case.mode == 'SAM')
    return score(args, case, recording, *case.reference_options, *code_of(case, recording),
                 *case.client_options)


def sendable(recording, folder):
    """Raw audio without a header becomes a WAV; make_scenes.py reads the rest. A VOR, which may be as
    short as a second, gets a lead of bare carrier in which the receiver fades in."""
    wav = os.path.join(folder, 'recording.wav')
    if '/vor/' in recording:
        run(['sox', recording, wav, 'remix', '1', 'pad', str(VOR_LEAD_S), '1'])
        return wav
    if not recording.endswith('.bin'):
        return recording
    run(['sox', '-t', 'raw', '-r', '22050', '-e', 'signed', '-b', '16', '-c', '1', recording, wav])
    return wav


def recorded(args, scene, rate, center, folder):
    """The recording that the receiver makes of a scene; its header tells rate and frequency."""
    run([os.path.join(args.build, 'host', 'velmora-host'), '--headless', '--free-run', *scene,
         '--rate', str(rate), '--center', str(center),
         '--record', 'vsdr' if args.layout == 'usb' else args.layout, '--record-path', folder])
    return glob.glob(os.path.join(folder, '*_ZephrinNANO_*.wav'))[0]


def receive(args, case, recording, rate, folder):
    """Scene, reception, score and report of one recording at one rate."""
    offset = OFFSETS_HZ[rate] if case.offset_hz is None else case.offset_hz
    scene, wav, report = (os.path.join(folder, n) for n in ('scene.f64', 'out.wav', 'report.json'))
    source = ['--wav', sendable(recording, folder)] if recording else []
    run(['/usr/bin/python3', os.path.join(args.tools, 'make_scenes.py'), case.scene,
         '--rate', str(rate), '--offset', str(offset), *source, '--out', scene,
         '--truth', os.path.join(folder, 'scene.json'), *case.scene_options])
    center = case.dial_hz - offset
    given = ['--scene', scene, '--scene-rate', str(rate), '--scene-frequency', str(center)]
    seconds = os.path.getsize(scene) / SCENE_SAMPLE_BYTES / rate
    if args.layout == 'usb':
        with open(scene, 'ab') as file:
            file.write(bytes(SCENE_SAMPLE_BYTES * round(USB_TAIL_S * rate)))
    if args.layout:
        given = ['--scene', recorded(args, given, rate, center, folder)]
    tune = case.dial_hz + TUNE_SHIFT_HZ.get(case.name, 0.0)
    reception = ['--rate', str(rate), '--center', str(center), '--tune', str(tune),
                 '--mode', case.mode, '--filter=' + case.filter, *case.host_options]
    if args.layout == 'usb':
        run([os.path.join(HERE, '..', 'tests', 'usb', 'receive.sh'), args.build, given[1], wav, report,
             '--seconds', '%.3f' % (seconds + USB_TAIL_S / 2), *reception])
    else:
        run([os.path.join(args.build, 'host', 'velmora-host'), '--headless', '--free-run', *given,
             '--out', wav, '--report', report, *reception])
    os.remove(scene)
    if case.inverted:
        received, wav = wav, os.path.join(folder, 'inverted.wav')
        run(['sox', received, wav, 'vol', '-1'])
    with open(report) as file:
        told = json.load(file)
    return score(args, case, wav, *part_of(case, recording, told), *code_of(case, recording),
                 *case.client_options), told


def missing_blocks(args, report):
    """Blocks that the receiver dropped. One on the bus has none to tell of; its run goes by the clock,
    and a block that is late is silence."""
    if args.layout == 'usb':
        return report['audio']['short_blocks']
    return report['iq']['dropped_blocks']


def keep(args, folder, label):
    os.makedirs(args.keep, exist_ok=True)
    for name in ('out.wav', 'report.json'):
        shutil.copy(os.path.join(folder, name), os.path.join(args.keep, label + '-' + name))


def check(args, case):
    """Prints a line for each recording and rate; returns the number of failures."""
    failures = 0
    recordings = sorted(glob.glob(os.path.join(args.data, case.files))) if case.files else ['']
    for recording in recordings:
        label = os.path.splitext(os.path.basename(recording))[0] or case.scene
        for rate in [r for r in case.rates if r in args.rate]:
            began = time.time()
            with tempfile.TemporaryDirectory() as folder:
                reference = reference_of(args, case, recording, folder)
                got, report = receive(args, case, recording, rate, folder)
                if args.keep:
                    keep(args, folder, '%s-%s-%d' % (case.name, label, rate))
            missing = missing_blocks(args, report)
            good = case.good(got, reference) and missing == 0
            failures += not good
            print('%-8s %-22.22s %8d %9.5g %9.5g %8d %9.1f %7.0f  %s' % (
                case.name, label, rate, reference, got, missing,
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
    print('%-8s %-22s %8s %9s %9s %8s %9s %7s' % (
        'case', 'recording', 'rate', 'wanted', 'received', 'dropped', 'x real t.', 'seconds'))
    failures = sum(check(args, case) for case in cases)
    print('all as good as wanted' if not failures else '%d failed' % failures)
    return 1 if failures else 0


if __name__ == '__main__':
    sys.exit(main())
