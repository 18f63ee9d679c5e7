# SPDX-License-Identifier: Apache-2.0
"""Runs one process of an app in a Python of its own and speaks to the editor over a socket.

Started as: python3 -I -u -X utf8 rpa_child.py ADDRESS TOKEN, where ADDRESS is "local:PATH" or "tcp:PORT" of this
machine. The token goes first, as it stands; then both sides send frames: a 4-byte big-endian length and a JSON object.
Nothing in the program costs time per statement: where it stands is sampled from outside, and where it failed is read
from the traceback.
"""

import collections
import json
import linecache
import os
import select
import signal
import socket
import struct
import sys
import threading
import traceback
import _thread

PROGRAM_FILE = "<process>"
SAMPLE_SECONDS = 0.05
LOG_BATCH_BYTES = 32 * 1024
LOG_LINE_CHARACTERS = 16 * 1024
HEADER = struct.Struct(">I")
FRAME_BYTES = 16 * 1024 * 1024
RECEIVE_BYTES = 4096
LARGEST_RECEIVE_BYTES = 1024 * 1024
# Made once: json.dumps() with arguments makes an encoder for every call.
ENCODE = json.JSONEncoder(ensure_ascii=False, separators=(",", ":"), default=str).encode
DECODE = json.JSONDecoder().decode
# What ends the program from within. Where the main thread cannot be sent a signal, only the interrupt wakes it when it
# sleeps.
CAN_SIGNAL = hasattr(signal, "pthread_kill")
STOP_SIGNAL = signal.SIGTERM if CAN_SIGNAL else signal.SIGINT


class Stopped(BaseException):
    """Raised in the program when the editor asks it to end; not an Exception, so that no handler swallows it."""


class CallFailed(Exception):
    """The editor refused a call; the text is the reason in the user's words."""


def connect(address):
    kind, _, place = address.partition(":")
    if kind == "local":
        connection = socket.socket(socket.AF_UNIX, socket.SOCK_STREAM)
        connection.connect(place)
        return connection
    connection = socket.socket(socket.AF_INET, socket.SOCK_STREAM)
    connection.connect(("127.0.0.1", int(place)))
    connection.setsockopt(socket.IPPROTO_TCP, socket.TCP_NODELAY, 1)
    return connection


class Link:
    def __init__(self, address, token):
        self.socket = connect(address)
        self.socket.sendall(token.encode())
        self.write_lock = threading.Lock()
        self.call_lock = threading.RLock()
        self.next_call = 0
        self.received = bytearray()

    def send(self, frame):
        body = ENCODE(frame).encode("utf-8", "replace")
        if len(body) > FRAME_BYTES:
            raise CallFailed("数据超过 16 MB，无法传给编辑器")
        with self.write_lock:
            self.socket.sendall(HEADER.pack(len(body)) + body)

    def receive(self):
        self.read_until(HEADER.size)
        end = HEADER.size + HEADER.unpack_from(self.received)[0]
        self.read_until(end)
        frame = DECODE(self.received[HEADER.size:end].decode("utf-8"))
        del self.received[:end]
        return frame

    def read_until(self, count):
        while len(self.received) < count:
            missing = count - len(self.received)
            part = self.socket.recv(min(max(missing, RECEIVE_BYTES), LARGEST_RECEIVE_BYTES))
            if not part:
                # The editor is gone: nobody is left to work for.
                os._exit(0)
            self.received += part

    def call(self, name, *arguments):
        if OUTPUT.lines:
            OUTPUT.flush()
        with self.call_lock:
            self.next_call += 1
            self.send({"t": "call", "id": self.next_call, "name": name, "args": arguments})
            while True:
                answer = self.receive()
                if answer.get("t") == "answer" and answer.get("id") == self.next_call:
                    break
                self.take_request(answer)
        if not answer.get("ok"):
            raise CallFailed(answer.get("error") or "编辑器没有执行这个操作")
        return answer.get("value")

    def look_for_request(self):
        """Reads what came while no call is under way; a call reads it itself."""
        if not self.call_lock.acquire(blocking=False):
            return
        try:
            while self.received or select.select([self.socket], [], [], 0)[0]:
                self.take_request(self.receive())
        finally:
            self.call_lock.release()

    @staticmethod
    def take_request(frame):
        if frame.get("t") == "stop":
            global STOP_ASKED
            STOP_ASKED = True
            interrupt_program()
        elif frame.get("t") == "debug":
            debug(frame)


class Output:
    """Collects log lines and sends them together: a line of its own frame each would be slower than the program."""

    def __init__(self):
        self.lock = threading.Lock()
        self.lines = []
        self.size = 0

    def add(self, level, text, line=0):
        text = text[:LOG_LINE_CHARACTERS]
        with self.lock:
            self.lines.append([level, text, line])
            self.size += len(text) + 32
            full = self.size > LOG_BATCH_BYTES
        if full:
            self.flush()

    def flush(self):
        with self.lock:
            lines, self.lines, self.size = self.lines, [], 0
            # Sent inside the lock, so that two flushes cannot change the order of lines.
            if lines and LINK:
                LINK.send({"t": "log", "lines": lines})


class Writer:
    """Stands in for sys.stdout and sys.stderr."""

    encoding = "utf-8"
    errors = "replace"

    def __init__(self, level):
        self.level = level
        self.rest = ""

    def write(self, text):
        *lines, self.rest = (self.rest + str(text)).split("\n")
        for line in lines:
            OUTPUT.add(self.level, line, current_line())
        if len(self.rest) > LOG_LINE_CHARACTERS:
            OUTPUT.add(self.level, self.rest, current_line())
            self.rest = ""
        return len(text)

    def flush(self):
        if self.rest:
            OUTPUT.add(self.level, self.rest, current_line())
            self.rest = ""

    def isatty(self):
        return False

    def fileno(self):
        return 1


LINK = None
DEBUGGER = None
REQUESTS = collections.deque()  # for the debugger, in the order in which they came
JOB = {}
RUNNING = None
STOP_ASKED = False
SPANS = None
OUTPUT = Output()
MAIN = threading.main_thread().ident


def program_line(frame):
    """Line of the innermost frame that belongs to the program, 0 outside it."""
    while frame is not None:
        if frame.f_code.co_filename == PROGRAM_FILE:
            return frame.f_lineno
        frame = frame.f_back
    return 0


def current_line():
    return program_line(sys._getframe(1))


def watch():
    """Tells the editor where the program stands and what it wrote, some times a second, and hears what it asks."""
    last = 0
    ticker = threading.Event()
    while True:
        ticker.wait(SAMPLE_SECONDS)
        LINK.look_for_request()
        if DEBUGGER:
            DEBUGGER.tick()
        elif REQUESTS and RUNNING:
            make_debugger(REQUESTS[0], RUNNING).hear()
        OUTPUT.flush()
        SPANS.flush(LINK)
        line = program_line(sys._current_frames().get(MAIN))
        if line and line != last:
            last = line
            LINK.send({"t": "at", "line": line, "us": SPANS.now()})


def foreign_text(line):
    """Programs of Windows write in the encoding of its consoles, unless they know better."""
    try:
        return line.decode("utf-8")
    except UnicodeDecodeError:
        return line.decode("oem" if os.name == "nt" else "utf-8", "replace")


def read_foreign_output(descriptor):
    """What programs started by the process write; read here, so that it can neither block them nor fill anything."""
    with os.fdopen(descriptor, "rb") as pipe:
        while True:
            line = pipe.readline(LOG_LINE_CHARACTERS)
            if not line:
                return
            OUTPUT.add("info", foreign_text(line.rstrip(b"\r\n")))


def redirect_output():
    readable, writable = os.pipe()
    os.dup2(writable, 1)
    os.dup2(writable, 2)
    os.close(writable)
    threading.Thread(target=read_foreign_output, args=(readable,), daemon=True).start()
    sys.stdout, sys.stderr = Writer("info"), Writer("error")


def interrupt_program():
    if CAN_SIGNAL:
        signal.pthread_kill(MAIN, STOP_SIGNAL)
    else:
        _thread.interrupt_main(STOP_SIGNAL)


def stop(*_):
    if DEBUGGER and not STOP_ASKED:
        DEBUGGER.on_signal()
    else:
        raise Stopped()


def make_debugger(setup, running=None):
    """Loaded when it is needed: a run that nobody debugs has nothing of it."""
    global DEBUGGER
    import rpa_debug

    DEBUGGER = rpa_debug.Debugger(sys.modules[__name__], setup, JOB["source"], running)
    return DEBUGGER


def debug(request):
    """From the thread that watches, or from a call of the program."""
    REQUESTS.append(request)
    if DEBUGGER:
        DEBUGGER.hear()


def woven(source):
    """The program's tree with its calls of the outside noted by SPANS; None when it is better read as it stands."""
    sites = []
    try:
        tree = span_code.parse(source, PROGRAM_FILE, sites)
    except Exception:  # what is wrong with the text is said by whoever compiles it
        return None
    SPANS.sites = sites  # the same ones when a run is debugged from now on
    return tree


def compiled(tree):
    try:
        return compile(tree, PROGRAM_FILE, "exec", dont_inherit=True)
    except (SyntaxError, RecursionError):
        return None


def compile_plainly(source):
    tree = woven(source)
    return (tree and compiled(tree)) or compile(source, PROGRAM_FILE, "exec", dont_inherit=True)


def compile_program(source):
    setup = JOB.get("debug")
    return compile_plainly(source) if setup is None else make_debugger(setup).compile()


def readable(error):
    """What went wrong, in the author's words."""
    if isinstance(error, CallFailed):
        return str(error)
    # Nothing may be loaded any more.
    if isinstance(error, MemoryError):
        return "内存不足：流程使用的内存超过了上限"
    if isinstance(error, RecursionError):
        return "嵌套太深：流程可能在不停地调用自己"
    sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
    import error_words  # only runs that fail pay for it

    return error_words.of(error, PROGRAM_FILE)


def failure(error):
    line = error.lineno if isinstance(error, SyntaxError) and error.filename == PROGRAM_FILE else 0
    for entry in traceback.extract_tb(error.__traceback__):
        if entry.filename == PROGRAM_FILE:
            line = entry.lineno
    rpa_spans.without_wrapper(error)
    trace = "".join(traceback.format_exception(type(error), error, error.__traceback__))
    end = {"t": "end", "ok": False, "line": line or 0, "error": readable(error), "trace": trace[-LOG_LINE_CHARACTERS:]}
    return {**end, **details(error)}


def details(error):
    """Nothing may be loaded any more when memory is short."""
    if isinstance(error, MemoryError):
        return {}
    try:
        import failure_details

        return failure_details.details_of(error, PROGRAM_FILE, CallFailed)
    except Exception:  # why the program failed is told in any case
        return {}


def run(job):
    global JOB, RUNNING
    import rpa_api

    rpa_api.connect(LINK.call, lambda level, text: OUTPUT.add(level, text, program_line(sys._getframe(2))))
    for path in reversed(job.get("paths", [])):
        sys.path.insert(0, path)
    JOB = job
    source = job["source"]
    linecache.cache[PROGRAM_FILE] = (len(source), None, source.splitlines(True), PROGRAM_FILE)
    try:
        RUNNING = compile_program(source)
        names = {"__name__": "__main__", "rpa": rpa_api}
        if DEBUGGER:
            DEBUGGER.begin(names)
        SPANS.begin()
        exec(RUNNING, names)
    except Stopped:
        return {"t": "end", "ok": False, "stopped": True, "line": 0, "error": "", "trace": ""}
    except SystemExit:
        return {"t": "end", "ok": True}
    except BaseException as error:  # whatever it is, the author must read it
        return failure(error)
    return {"t": "end", "ok": True}


def main():
    global LINK
    address, token = sys.argv[1:3]
    sys.argv = [PROGRAM_FILE]
    sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
    LINK = Link(address, token)
    # Ready before the job comes: a child that is kept warm waits in the next line with everything loaded.
    global SPANS, rpa_spans, span_code
    import rpa_api  # noqa: F401
    import rpa_spans
    import span_code

    SPANS = rpa_spans.Spans()
    redirect_output()
    job = LINK.receive()
    signal.signal(signal.SIGINT, signal.SIG_IGN)
    signal.signal(STOP_SIGNAL, stop)
    threading.Thread(target=watch, daemon=True).start()
    end = run(job)
    signal.signal(STOP_SIGNAL, signal.SIG_IGN)
    sys.settrace(None)
    sys.stdout.flush()
    sys.stderr.flush()
    OUTPUT.flush()
    SPANS.flush(LINK)
    LINK.send(end)
    # Threads and children of the program must not outlive it.
    os._exit(0)


if __name__ == "__main__":
    main()
