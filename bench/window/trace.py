#!/usr/bin/env python3
"""Traces of the engine: where the time of a step in the window goes, in the page's process and in the program's.

    bench/window/trace.py [--size 1MB] [--build build/release] [--save FOLDER] [STEP...]

    open    a document comes in, until all of it is laid out
    pace    keys at typing pace, to their layout
    pixel   the same, each until it is seen
    caret   the caret goes a letter on
    plain-open, plain-pace ...   the same in a plain editable page

Starts window_bench, which does the steps, and asks its engine for a trace over the engine's own remote protocol. Needs
nothing but Python. Times are processor time of threads in milliseconds; in brackets is the time on the clock.
"""

import argparse
import base64
import collections
import json
import os
import re
import socket
import subprocess
import sys
import time
import urllib.request

# With some others (cc, disabled-by-default-devtools.timeline) the page's process of this engine ends, and devtools.timeline
# counts all boxes of the page for each layout.
CATEGORIES = ['toplevel', 'blink', 'blink.user_timing', 'v8', 'mojom', 'loading', 'viz']
REPEATS = {'pace': 20, 'pixel': 12, 'caret': 20}

# What an event of the engine counts to, by its name; what none of these fits counts to the event around it.
SUBJECTS = [
    ('clearing memory away', r'GC|V8\.GC.*|BlinkGC.*|.*Heap.*Sweep.*|ThreadState::.*|MinorGC|MajorGC|Scavenge.*'),
    ('our script', r'FunctionCall|EvaluateScript|v8\..*|V8\..*|RunMicrotasks|TimerFire|EventDispatch|ParseFunction'),
    ('style', r'UpdateLayoutTree|Document::updateStyle|Document::recalcStyle|StyleEngine.*|Document::rebuildLayoutTree.*|'
              r'RuleSet.*|ParseAuthorStyleSheet|CSS.*|Document::UpdateStyle.*|SelectorQuery.*|UpdateStyleAndLayoutTree'),
    ('layout', r'Layout|LocalFrameView::layout|LocalFrameView::performLayout|LayoutNG.*|NG.*|UpdateLayout.*|'
               r'HitTest|LocalFrameView::.*Layout.*'),
    ('painting', r'Paint|PrePaint|PaintImage|Layerize|UpdateLayer|UpdateLayerTree|LocalFrameView::RunPaintLifecyclePhase|'
                 r'LocalFrameView::RunPrePaint.*|PaintController.*|PaintArtifactCompositor.*|LocalFrameView::.*Paint.*|'
                 r'LocalFrameView::RunCompositing.*|UpdateViewportIntersection|IntersectionObserver.*|'
                 r'CompositingInputsUpdater.*|.*Intersection.*'),
    ('handing frames on', r'Commit|LayerTreeHost.*|ProxyMain.*|ProxyImpl.*|SingleThreadProxy.*|Scheduler.*|Draw.*|'
                          r'Graphics\.Pipeline.*|LayerTreeHostImpl.*|ActivateLayerTree|NeedsBeginFrame.*|BeginFrame|'
                          r'BeginMainThreadFrame|PageAnimator.*|WebFrameWidgetImpl.*|TileManager.*|.*Tile.*|PictureLayer.*'),
    ('drawing pixels', r'Raster.*|.*RasterTask.*|ImageDecodeTask|RasterBufferProvider.*|SkiaRenderer.*|.*SoftwareRenderer.*|'
                       r'.*DirectRenderer.*|Display::.*|Viz.*'),
    ('messages', r'Receive mojo.*|.*mojom.*|SimpleWatcher.*|Connector.*|MessagePipe.*|.*Mojo.*|Send mojo.*|ChannelMojo.*|IPC.*'),
]
SUBJECTS = [(subject, re.compile('^(' + names + ')$')) for subject, names in SUBJECTS]


class Remote:
    """The engine's remote protocol: messages of a web socket, of which only texts are used."""

    def __init__(self, address):
        host, port, path = re.match(r'ws://([^:/]+):(\d+)(/.*)', address).groups()
        self.socket = socket.create_connection((host, int(port)), timeout=300)
        self.file = self.socket.makefile('rb')
        self.number = 0
        key = base64.b64encode(os.urandom(16)).decode()
        self.socket.sendall((f'GET {path} HTTP/1.1\r\nHost: {host}:{port}\r\nUpgrade: websocket\r\nConnection: Upgrade\r\n'
                             f'Sec-WebSocket-Key: {key}\r\nSec-WebSocket-Version: 13\r\n\r\n').encode())
        while self.file.readline().strip():
            pass

    def send(self, method, **parameters):
        self.number += 1
        text = json.dumps({'id': self.number, 'method': method, 'params': parameters}).encode()
        length = bytes([0x80 | len(text)]) if len(text) < 126 else bytes([0x80 | 126]) + len(text).to_bytes(2, 'big')
        self.socket.sendall(b'\x81' + length + bytes(4) + text)  # masked by zeros
        return self.number

    def receive(self):
        text = b''
        while True:
            first, length = self.file.read(2)
            if length == 126:
                length = int.from_bytes(self.file.read(2), 'big')
            elif length == 127:
                length = int.from_bytes(self.file.read(8), 'big')
            text += self.file.read(length)
            if first & 0x80:
                return json.loads(text)

    def call(self, method, **parameters):
        number = self.send(method, **parameters)
        while True:
            message = self.receive()
            if message.get('id') == number:
                if 'error' in message:
                    raise RuntimeError(f'{method}: {message["error"]["message"]}')
                return message['result']

    def trace(self, step):
        self.call('Tracing.start', transferMode='ReportEvents',
                  traceConfig={'recordMode': 'recordAsMuchAsPossible', 'includedCategories': CATEGORIES})
        answer = step()
        self.send('Tracing.end')
        events = []
        while True:
            message = self.receive()
            if message.get('method') == 'Tracing.dataCollected':
                events += message['params']['value']
            if message.get('method') == 'Tracing.tracingComplete':
                return answer, events


class Bench:
    """window_bench, which does a step when a line names it."""

    def __init__(self, program):
        with socket.socket() as free:
            free.bind(('127.0.0.1', 0))
            self.port = free.getsockname()[1]
        surroundings = dict(os.environ, QTWEBENGINE_REMOTE_DEBUGGING=str(self.port))
        surroundings.setdefault('QT_QPA_PLATFORM', 'offscreen')
        self.process = subprocess.Popen([program, '--steps'], stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True,
                                        env=surroundings, stderr=subprocess.DEVNULL)
        self.wait_for('ready')

    def wait_for(self, word):
        for line in self.process.stdout:
            if line.startswith(word):
                return [float(number) for number in line.split()[1:]]
        raise RuntimeError('window_bench has ended')

    def do(self, line):
        self.process.stdin.write(line + '\n')
        self.process.stdin.flush()
        return self.wait_for('done')

    def remote(self):
        # The program's loop answers, so it has to be left to run.
        answer = urllib.request.urlopen(f'http://127.0.0.1:{self.port}/json/version', timeout=30)
        return Remote(json.load(answer)['webSocketDebuggerUrl'])

    def end(self):
        self.process.stdin.close()
        self.process.wait(30)


def subject_of(name):
    for subject, names in SUBJECTS:
        if names.match(name):
            return subject
    return None


def own_times(events):
    """Of each thread and subject the processor time, and of each task its length: [(thread, subject), ...] to ms."""
    threads = {(e['pid'], e['tid']): e['args']['name'] for e in events if e.get('ph') == 'M' and e['name'] == 'thread_name'}
    by_thread = collections.defaultdict(list)
    for event in events:
        if event.get('ph') == 'X' and 'dur' in event:
            by_thread[event['pid'], event['tid']].append(event)
    times, tasks = collections.Counter(), []
    names = collections.Counter()
    for thread, own in by_thread.items():
        own.sort(key=lambda event: (event['ts'], -event['dur']))
        stack = []
        for event in own:
            while stack and event['ts'] >= stack[-1]['end']:
                stack.pop()
            spent = event.get('tdur', 0)
            subject = subject_of(event['name']) or (stack[-1]['subject'] if stack else 'the rest')
            times[threads.get(thread, '?'), subject] += spent / 1000
            names[threads.get(thread, '?'), subject, event['name']] += spent / 1000
            if stack:
                times[threads.get(thread, '?'), stack[-1]['subject']] -= spent / 1000
                names[threads.get(thread, '?'), stack[-1]['subject'], stack[-1]['name']] -= spent / 1000
            else:
                tasks.append((threads.get(thread, '?'), event))
            stack.append({'end': event['ts'] + event['dur'], 'subject': subject, 'name': event['name']})
    return times, tasks, names


def report(step, count, answer, events, names_too):
    times, tasks, names = own_times(events)
    print(f'\n{step}: {answer[0] / count:.1f} ms on the clock, {answer[1] / count:.2f} of processor time of the program\'s loop'
          + (f', each of {count}' if count > 1 else ''))
    by_thread = collections.defaultdict(dict)
    for (thread, subject), time_ in times.items():
        by_thread[re.sub(r'\d+$|/.*', '', thread)][subject] = by_thread[re.sub(r'\d+$|/.*', '', thread)].get(subject, 0) + time_
    for thread, subjects in sorted(by_thread.items(), key=lambda one: -sum(one[1].values())):
        whole = sum(subjects.values())
        if whole / count < 0.1:
            continue
        print(f'  {thread:34}{whole / count:9.2f}')
        for subject, time_ in sorted(subjects.items(), key=lambda one: -one[1]):
            if time_ / count >= 0.02:
                print(f'    {subject:32}{time_ / count:9.2f}')
    if names_too:
        for (thread, subject, name), time_ in names.most_common(45):
            print(f'      {thread:28}{subject:22}{name:50}{time_ / count:9.2f}')
    page = sorted((event for thread, event in tasks if thread == 'CrRendererMain'), key=lambda event: -event.get('tdur', 0))
    print('  longest tasks of the page:',
          ', '.join(f'{event.get("tdur", 0) / 1000:.1f} ({event["dur"] / 1000:.1f})' for event in page[:6]))


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument('steps', nargs='*', default=['open', 'pace', 'pixel'])
    parser.add_argument('--size', default='1MB')
    parser.add_argument('--build', default='build/release')
    parser.add_argument('--save', help='a folder for the traces themselves')
    parser.add_argument('--names', action='store_true', help='also by the names of the engine\'s events')
    given = parser.parse_args()
    bench = Bench(os.path.join(given.build, 'bin', 'window_bench'))
    remote = bench.remote()
    opened = set()
    for step in given.steps:
        who, what = step.split('-') if '-' in step else ('editor', step)
        count = REPEATS.get(what, 1)
        if what != 'open' and who not in opened:
            bench.do(f'{who} open {given.size}')
        opened.add(who)
        line = f'{who} {what} {given.size if what == "open" else count}'
        if what != 'open':
            bench.do(f'{who} {what} 3')  # warm
        answer, events = remote.trace(lambda: bench.do(line))
        if given.save:
            with open(os.path.join(given.save, step + '.json'), 'w') as file:
                json.dump({'traceEvents': events}, file)
        report(step, count, answer, events, given.names)
    bench.end()


if __name__ == '__main__':
    sys.exit(main())
