# SPDX-License-Identifier: Apache-2.0
"""Stops a program where its author wants it, and goes on as the author says. Loaded only by runs that are debugged.

Breakpoints are checks compiled into the program (debug_code.py). sys.settrace is on only while somebody steps, waits
for a pause or runs in slow motion, and for frames that ran already when they got a breakpoint. Everything happens in
the program's main thread; other threads of a program are not stopped.
"""

import builtins
import collections
import sys
import threading
import time

from debug_catches import Catches, line_of
from debug_code import AT, FAILED, Program, key_of
from debug_points import Expression, Point
from debug_stop import OverTime, Stop

RUN, PAUSE, INTO, OVER, OUT = "continue", "pause", "into", "over", "out"
SLOWEST = 2.0


class Debugger:
    def __init__(self, host, setup, source, running=None):
        """host: the module of the child; running: the code that runs already, None before the start."""
        self.host = host
        self.setup = setup
        places, part = setup.get("places"), setup.get("part")
        self.program = Program(source, host.PROGRAM_FILE, places, part, host.woven(source))
        self.requests = host.REQUESTS
        self.points = {}
        self.target = 0         # line at which to stop once
        self.mode = RUN
        self.goal = None        # frame that a step is to stop in; None: any
        self.due = None         # frame whose compiled check is about to stop for a step
        self.slow = 0.0
        self.errors = "none"    # "unhandled", "all"
        self.catches = None
        self.visits = {}        # frame -> (place, offset) of what it does
        self.watched = {}       # frame that ran before -> lines that its code does not check
        self.inside = running is None  # the debugger works: nothing of the program stops, no request is taken
        self.deadline = 0.0
        self.outbox = collections.deque()
        self.wake = threading.Event()
        self.stop = Stop(self)
        setattr(builtins, AT, self.at)
        setattr(builtins, FAILED, self.failed)
        if running is not None:
            self.program.adopt(running)

    def compile(self):
        self.take_settings(self.setup)
        self.take_points(self.setup)
        self.program.guarded = self.errors != "none"
        if self.setup.get("pause"):
            self.mode = PAUSE
        return self.program.compile(self._wanted())

    def begin(self, names):
        """Right before the program: the variables that the author gives it."""
        for name, text in (self.setup.get("given") or {}).items():
            try:
                names[name] = eval(Expression(text).code, names)
            except Exception as error:
                reason = f"变量“{name}”的值无法计算：{type(error).__name__}: {error}"
                raise self.host.CallFailed(reason) from error
        self.take_requests()

    def hear(self):
        """Any thread: the program takes the requests at its next instruction."""
        self.wake.set()
        self.host.interrupt_program()

    def tick(self):
        """Some times a second, from the thread that watches."""
        while self.outbox:
            self.host.LINK.send(self.outbox.popleft())
        if self.deadline and time.monotonic() > self.deadline:
            self.host.interrupt_program()

    def on_signal(self):
        """In the main thread, wherever it is."""
        if self.deadline and time.monotonic() > self.deadline:
            self.deadline = 0.0
            raise OverTime()
        if not self.inside:
            self.take_requests()

    def take_requests(self):
        """A signal that comes meanwhile must not take the next one inside of this one."""
        self.inside = True
        while self.inside:
            try:
                while self.requests:
                    self.take_safely(self.requests.popleft())
                self.arm()
            finally:
                self.inside = False
            self.inside = bool(self.requests)

    def take_safely(self, request):
        """A request that cannot be carried out must not end the program."""
        try:
            self.take(request)
        except Exception as error:
            self.host.OUTPUT.add("warning", f"调试请求没有执行：{type(error).__name__}: {error}")

    def take(self, request):
        """A request that needs no stop."""
        op = request.get("op")
        if op == "pause":
            self.mode, self.goal = PAUSE, None
        elif op == "settings":
            self.take_settings(request)
            guarded = self.errors != "none"
            if guarded and not self.program.guarded:
                self.program.guarded = True
                self.program.exchange(self._wanted(), everything=True)
        elif op == "points":
            self.take_points(request)
            self.program.exchange(self._wanted())

    def take_settings(self, request):
        self.slow = min(SLOWEST, max(0.0, float(request.get("slow") or 0) / 1000))
        self.errors = request.get("errors") or "none"
        self.stop.watches = [str(text) for text in request.get("watches") or ()]

    def take_points(self, request):
        points = {}
        for spec in request.get("points") or ():
            line = self.standing(spec["line"])
            known = self.points.get(line)
            if line:
                points[line] = known if known and known.spec == spec else Point(spec)
        self.points = points
        if self.program.own_text:
            lines = [[spec["line"], self.standing(spec["line"])] for spec in request.get("points") or ()]
            self.outbox.append({"t": "debug", "event": "placed", "lines": lines})
        if "target" in request:
            self.target = self.standing(request["target"])

    def standing(self, line):
        return self.program.anchor_of(line) if line > 0 and self.program.own_text else line

    def _wanted(self):
        return set(self.points) | ({self.target} if self.target else set())

    def at(self, line):
        """Called by the program before a statement with a breakpoint."""
        if self.inside or threading.get_ident() != self.host.MAIN:
            return
        frame = sys._getframe(1)
        due, self.due = self.due is frame, None
        reason = self.reason_at(line, frame)
        if reason or due:
            self.stop.hold(frame, reason or self.step_reason())

    def reason_at(self, line, frame):
        """Why a breakpoint of the line stops the program now; empty when it does not."""
        if line == self.target:
            self.target = 0
            return "target"
        point = self.points.get(line)
        if point is None:
            return ""
        self.inside, self.stop.spent = True, 0.0
        try:
            if not point.meets(frame):
                return ""
            if point.log and not point.trouble:
                self.host.OUTPUT.add("point", point.log_text(frame, self.stop.reader.short), line)
                return ""
        finally:
            self.come_out()
        self.stop.note = point.trouble
        return "breakpoint"

    def step_reason(self):
        return "pause" if self.mode == PAUSE else "step"

    def failed(self):
        """Called by the program when a statement failed, before anything is cleaned up."""
        error = sys.exc_info()[1]
        if self.inside or self.errors == "none" or threading.get_ident() != self.host.MAIN:
            return
        if not isinstance(error, Exception) or isinstance(error, (StopIteration, StopAsyncIteration)):
            return
        frame = sys._getframe(1)
        if error.__dict__.get("__rpa_shown__"):
            return
        line = line_of(error, frame)
        if self.errors == "unhandled" and self._is_handled(error, frame, line):
            return
        error.__dict__["__rpa_shown__"] = True
        self.stop.hold(frame, "error", error, line)

    def _is_handled(self, error, frame, line):
        if self.catches is None:
            self.catches = Catches(self.program)
        self.inside = True
        try:
            return self.catches.will_handle(error, self.stack_of(frame, line))
        finally:
            self.come_out()

    def come_out(self):
        self.inside = False
        if self.requests:  # their signal came while it could not be followed
            self.take_requests()

    def is_program(self, frame):
        code = frame.f_code
        return code.co_filename == self.host.PROGRAM_FILE and (code.co_name[0] != "<" or code.co_name == "<module>")

    def stack_of(self, frame, line=0):
        """[(frame, line)] of the program, the innermost first."""
        stack = []
        while frame is not None:
            if self.is_program(frame):
                stack.append((frame, line or frame.f_lineno))
                line = 0
            frame = frame.f_back
        return stack

    def arm(self):
        """Traces what has to be traced, and nothing else."""
        stack = self.stack_of(sys._getframe(1))
        self.watched = {}
        for frame, _ in stack:
            code = frame.f_code
            checked = self.program.hooks.get(id(code), frozenset())
            unchecked = self.program.wanted.get(key_of(code), frozenset()) - checked
            if unchecked:
                self.watched[frame] = unchecked
        everywhere = self.mode != RUN or self.slow > 0
        for frame, line in stack:
            traced = everywhere or frame in self.watched
            frame.f_trace = self.line if traced else None
        traces = everywhere or bool(self.watched or self.program.waiting)
        # Kept no longer than needed: what is held here lives longer than in a run of its own.
        self.visits = {frame: (self.program.place_of(line), frame.f_lasti) for frame, line in stack} if traces else {}
        sys.settrace(self.call if traces else None)

    def call(self, frame, event, arg):
        if not self.is_program(frame):
            return None
        code = self.program.waiting.get(id(frame.f_code))
        if code is not None and self.program.give(code, {id(frame.f_code): frame.f_code}):
            self.watched[frame] = self.program.hooks[id(code)]
        if self.mode in (PAUSE, INTO) or self.slow > 0 or frame in self.watched:
            return self.line
        return None

    def line(self, frame, event, arg):
        if event == "return":
            self.leave(frame)
        elif event == "line":
            place, offset = self.program.place_of(frame.f_lineno), frame.f_lasti
            before = self.visits.get(frame, (0, -1))
            self.visits[frame] = (place, offset)
            if place and (before[0] != place or offset <= before[1]):
                self.visit(frame, place, before[0])
        return self.line

    def leave(self, frame):
        self.visits.pop(frame, None)
        self.watched.pop(frame, None)
        if frame is self.goal:
            callers = self.stack_of(frame.f_back)
            self.goal = callers[0][0] if callers else frame
        if self.mode == RUN and not self.slow and not self.watched and not self.program.waiting:
            self.visits = {}
            sys.settrace(None)

    def visit(self, frame, place, before):
        """A statement is about to be carried out."""
        if self.slow > 0:
            self.dawdle(place)
        due = self.mode != RUN and (self.goal is None or frame is self.goal)
        # The check of a loop stands before it: it is not met again when the loop comes round.
        comes_round = place <= before <= self.program.loops.get(place, 0)
        if place in self.program.hooks.get(id(frame.f_code), ()) and not comes_round:
            self.due = frame if due else None
            return
        reason = ""
        if place in self.watched.get(frame, ()) and not comes_round:
            reason = self.reason_at(place, frame)
        if reason or due:
            self.stop.hold(frame, reason or self.step_reason())

    def dawdle(self, place):
        self.outbox.append({"t": "at", "line": place})
        end = time.monotonic() + self.slow
        while self.slow > 0:
            rest = end - time.monotonic()
            if rest <= 0 or self.mode == PAUSE:
                return
            self.wake.clear()
            self.wake.wait(rest)
