#!/usr/bin/env python3
"""Traces of the engine: where the time of a step in the window goes, in the page's process and in the program's.

    bench/window/trace.py [--size 1MB] [--build build/release] [--save FOLDER] [STEP...]

    open    a document comes in, until all of it is laid out
    pace    keys at typing pace, to their layout
    pixel   the same, each until it is seen
    caret   the caret goes a letter on
    plain-open, plain-pace ...   the same in a plain editable page

Starts window_bench, which does the steps, and asks its engine for a trace over the engine's own remote protocol. Needs
nothing but Python. Prints a table of processor times, in milliseconds, of one opening or of one key: what of the page's loop the
view's own script takes with what it calls, and what the engine takes for style, layout, painting and messages. Of keys 'on the
clock' has the 100 ms of rest after each.
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
CATEGORIES = ['toplevel', 'blink', 'blink.user_timing', 'v8', 'blink_gc', 'cppgc', 'mojom', 'loading', 'viz']
REPEATS = {'pace': 20, 'pixel': 12, 'caret': 20}

# What an event of the engine counts to, by its name; what none of these fits counts to the event around it.
SUBJECTS = [
    ('clearing memory away', r'GC|V8\.GC.*|CppGC\..*|BlinkGC.*|.*Heap.*Sweep.*|ThreadState::.*|MinorGC|MajorGC|Scavenge.*'),
    ('script and what it calls', r'v8\..*|V8\..*'),
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
PAGE, REST = 'CrRendererMain', 'the rest of the page\'s loop'
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
    """Processor time in milliseconds by thread, subject and name of event, and the tasks of the page's thread, each with its
    time by subject."""
    threads = {(e['pid'], e['tid']): e['args']['name'] for e in events if e.get('ph') == 'M' and e['name'] == 'thread_name'}
    by_thread = collections.defaultdict(list)
    for event in events:
        if event.get('ph') == 'X' and 'dur' in event:
            by_thread[event['pid'], event['tid']].append(event)
    times, tasks = collections.Counter(), []
    for thread, own in by_thread.items():
        name = threads.get(thread, '?')
        own.sort(key=lambda event: (event['ts'], -event['dur']))
        stack = []  # of events that the present one stands in: (end, subject, name)
        for event in own:
            while stack and event['ts'] >= stack[-1][0]:
                stack.pop()
            spent = event.get('tdur', 0) / 1000
            subject = subject_of(event['name']) or (stack[-1][1] if stack else REST)
            if not stack:
                tasks.append((name, collections.Counter()))
            times[name, subject, event['name']] += spent
            tasks[-1][1][subject] += spent
            if stack:
                times[name, stack[-1][1], stack[-1][2]] -= spent
                tasks[-1][1][stack[-1][1]] -= spent
            stack.append((event['ts'] + event['dur'], subject, event['name']))
    return times, [task for name, task in tasks if name == PAGE]


def column_of(count, answer, events):
    """What the table says of a step: of each of `count` repeats."""
    times, tasks = own_times(events)
    column = collections.Counter()
    for (thread, subject, _), spent in times.items():
        if thread == PAGE:
            column[subject] += spent / count
            column['the page: its loop'] += spent / count
        elif re.match('Compositor|ThreadPool|Chrome_Child', thread):
            column['the page: other threads'] += spent / count
        elif thread != 'CrBrowserMain':
            column['the program: the engine\'s other threads'] += spent / count
    column['the program: its loop'] = answer[1] / count
    column['on the clock'] = answer[0] / count
    longest = max(tasks, key=lambda task: sum(task.values()), default=collections.Counter())
    column['longest task of the page'] = sum(longest.values())
    return column, times, longest


ROWS = [*(subject for subject, _ in SUBJECTS), REST, 'the page: its loop', 'the page: other threads', 'the program: its loop',
        'the program: the engine\'s other threads', 'longest task of the page', 'on the clock']


def print_table(columns):
    print('\n| processor time, ms | ' + ' | '.join(columns) + ' |\n|---' + '|--:' * len(columns) + '|')
    for row in ROWS:
        cells = [column[row] for column in columns.values()]
        if any(cell >= 0.05 for cell in cells):
            print(f'| {row} | ' + ' | '.join(f'{cell:.0f}' if cell >= 20 else f'{cell:.1f}' for cell in cells) + ' |')


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument('steps', nargs='*', default=['open', 'plain-open', 'pace', 'plain-pace', 'pixel', 'plain-pixel'])
    parser.add_argument('--size', default='1MB')
    parser.add_argument('--build', default='build/release')
    parser.add_argument('--save', help='a folder for the traces themselves')
    parser.add_argument('--first', action='store_true', help='the first page of the window: none before it is to be cleared away')
    parser.add_argument('--names', action='store_true', help='also by the names of the engine\'s events')
    given = parser.parse_args()
    bench = Bench(os.path.join(given.build, 'bin', 'window_bench'))
    remote = bench.remote()
    opened, columns = set(), {}
    for step in given.steps:
        who, what = step.split('-') if '-' in step else ('editor', step)
        count = REPEATS.get(what, 1)
        # What a first time brings, as fonts and compiled scripts, is not what is asked here.
        if who not in opened and not given.first:
            bench.do(f'{who} open {given.size}')
        opened.add(who)
        if what != 'open':
            bench.do(f'{who} {what} 3')
        line = f'{who} {what} {given.size if what == "open" else count}'
        answer, events = remote.trace(lambda: bench.do(line))
        if given.save:
            with open(os.path.join(given.save, step + '.json'), 'w') as file:
                json.dump({'traceEvents': events}, file)
        columns[step], times, longest = column_of(count, answer, events)
        print(f'{step}: longest task of the page {sum(longest.values()):.1f} ms:',
              ', '.join(f'{subject} {spent:.1f}' for subject, spent in longest.most_common() if spent >= 0.5))
        if given.names:
            for (thread, subject, name), spent in times.most_common(40):
                print(f'  {thread:28}{subject:22}{name:56}{spent / count:9.2f}')
    bench.end()
    print_table(columns)


if __name__ == '__main__':
    sys.exit(main())
