# SPDX-License-Identifier: Apache-2.0
"""The program stands still: what the author may look at, change and evaluate, until it goes on."""

import io
import sys
import threading
import time
import traceback

from debug_points import Expression
from debug_scopes import Refused, Scope, scopes_of, value_in
from debug_values import CHUNK, NAME, Chunk, Reader, kind_of

FRAMES = 200
TRACE_CHARACTERS = 16000
REPR_SECONDS = 0.3
REQUEST_SECONDS = 1.5       # for all texts of one request together
EVALUATE_SECONDS = 10.0


class OverTime(BaseException):
    """What is evaluated for the author takes too long."""


class Stop:
    def __init__(self, debugger):
        self.debugger = debugger
        self.host = debugger.host
        self.reader = Reader(self.ask)
        self.number = 0
        self.note = ""
        self.watches = []
        self.texts, self.texts_before = {}, {}    # path -> what was shown, of this stop and the one before
        self.opened, self.opened_before = {}, {}  # path -> (how many of those inside were shown, of how many)
        self.handles = []
        self.frames = []
        self.spent = 0.0

    def hold(self, frame, reason, error=None, line=0):
        """Returns when the author lets the program go on."""
        debugger = self.debugger
        debugger.inside, debugger.mode, debugger.goal = True, "continue", None
        sys.settrace(None)
        try:
            self._begin(frame, line)
            self._tell(reason, error)
            debugger.mode = self._serve()
            debugger.goal = self._goal(frame, debugger.mode)
        finally:
            self._end()
            debugger.inside = False
        debugger.take_requests()

    def _goal(self, frame, step):
        if step == "over":
            return frame
        if step == "out":
            callers = self.debugger.stack_of(frame.f_back)
            return callers[0][0] if callers else self  # no frame: the program runs to its end
        return None

    def _begin(self, frame, line):
        self.number += 1
        self.frames = self.debugger.stack_of(frame, line)
        self.texts, self.texts_before = {}, self.texts
        self.opened, self.opened_before = {}, self.opened
        self.handles, self.spent = [], 0.0
        self.host.OUTPUT.flush()

    def _end(self):
        self.frames, self.handles = [], []
        self.note = ""
        self.host.LINK.send({"t": "debug", "event": "resumed", "stop": self.number})

    def _tell(self, reason, error):
        program = self.debugger.program
        stack = [[frame.f_code.co_name[:NAME], program.place_of(line) or line] for frame, line in self.frames[:FRAMES]]
        event = {"t": "debug", "event": "paused", "stop": self.number, "reason": reason, "note": self.note,
                 "stack": stack, "depth": len(self.frames)}
        if error is not None:
            event["error"] = {"type": kind_of(error), "text": self._readable(error)[:TRACE_CHARACTERS],
                              "trace": "".join(traceback.format_exception(error))[-TRACE_CHARACTERS:]}
        self.host.LINK.send(event)
        self._tell_watches()

    def _tell_watches(self):
        if self.watches:
            self._send({"event": "watches", "values": [self._watch(text) for text in self.watches]})

    def _readable(self, error):
        try:
            return self._limited(lambda: self.host.readable(error), EVALUATE_SECONDS, quiet=True)
        except self.host.Stopped:
            raise
        except BaseException:
            return kind_of(error)

    def _send(self, frame):
        self.host.LINK.send({"t": "debug", "stop": self.number, **frame})

    # Requests

    def _serve(self):
        while True:
            request = self._next()
            op = request.get("op")
            if op == "resume":
                if request.get("stop") == self.number:
                    if request.get("target"):
                        self.debugger.target = self.debugger.standing(request["target"])
                        self.debugger.program.exchange(self.debugger._wanted())
                    return request.get("step") or "continue"
            elif request.get("id") is None:
                self._take_setting(request)
            elif request.get("stop") == self.number:
                self._answer(request)

    def _take_setting(self, request):
        if request.get("op") != "pause":
            self.debugger.take_safely(request)
        if request.get("op") == "settings":
            self._tell_watches()

    def _next(self):
        link = self.host.LINK
        with link.call_lock:
            while True:
                if self.debugger.requests:
                    return self.debugger.requests.popleft()
                frame = link.receive()
                if frame.get("t") == "debug":
                    return frame
                if frame.get("t") == "stop":
                    raise self.host.Stopped()

    def _answer(self, request):
        self.spent = 0.0
        operation = {"scopes": self.scopes, "children": self.children, "set": self.set, "evaluate": self.evaluate}
        answer = {"event": "answer", "id": request["id"], "ok": True}
        try:
            answer.update(operation[request["op"]](request))
        except self.host.Stopped:
            raise
        except BaseException as error:
            answer.update({"ok": False, "error": self._reason(error)})
        self._send(answer)

    def _reason(self, error):
        if isinstance(error, OverTime):
            return "计算时间太长，已放弃"
        text = str(error) if isinstance(error, (ValueError, LookupError)) and type(error) is Refused else ""
        return (text or f"{type(error).__name__}: {self._text_of(error)}")[:CHUNK]

    def _text_of(self, error):
        return self.ask(lambda: str(error))[1]

    def ask(self, call):
        """Foreign code gets little time, and what it prints is lost."""
        if self.spent > REQUEST_SECONDS:
            return False, "未显示"
        started = time.monotonic()
        try:
            return True, self._limited(call, REPR_SECONDS, quiet=True)
        except self.host.Stopped:
            raise
        except BaseException as error:
            return False, "显示超时" if isinstance(error, OverTime) else f"无法显示（{type(error).__name__}）"
        finally:
            self.spent += time.monotonic() - started

    def _limited(self, call, seconds, quiet=False):
        debugger = self.debugger
        if threading.get_ident() != self.host.MAIN or debugger.deadline:
            return call()
        outputs = sys.stdout, sys.stderr
        inside, debugger.inside = debugger.inside, True
        try:
            if quiet:
                sys.stdout = sys.stderr = io.StringIO()
            debugger.deadline = time.monotonic() + seconds
            try:
                return call()
            finally:
                debugger.deadline = 0.0
        finally:  # of its own: the time may be over in the line before
            debugger.inside = inside
            if quiet:
                sys.stdout, sys.stderr = outputs

    # Variables

    def described(self, name, value, path, settable=False, index=0):
        if type(value) is Chunk:
            return {"name": name, "type": "str", "size": len(value.text), "text": value.text, "handle": 0,
                    "inside": 0, "settable": False, "changed": False, "index": index}
        text = self.reader.short(value)
        inside = self.reader.count_of(value)
        handle = 0
        if inside:
            self.handles.append((value, path))
            handle = len(self.handles)
        # The length tells of what the short text leaves out.
        self.texts[path] = (text, self.reader.size_of(value), kind_of(value))
        changed = self._is_new(path, index) or self.texts_before.get(path, self.texts[path]) != self.texts[path]
        return {"name": name, "type": kind_of(value), "size": self.reader.size_of(value), "text": text,
                "handle": handle, "inside": inside, "settable": settable, "changed": changed, "index": index}

    def _is_new(self, path, index):
        """Whether it came into a place that was looked at during the stop before."""
        shown, total = self.opened_before.get(path[:-1], (0, 1))
        return path not in self.texts_before and (index < shown or shown >= total)

    def scopes(self, request):
        frame = self._frame(request)
        values = []
        for scope in scopes_of(frame, self.host.CallFailed):
            path = (scope.title, frame.f_code.co_name if scope.title == "局部变量" else "")
            self.handles.append((scope, path))
            values.append({"name": scope.title, "type": "", "text": "", "size": len(scope.entries), "changed": False,
                           "handle": len(self.handles), "inside": len(scope.entries), "settable": False, "index": 0})
        return {"values": values, "total": len(values)}

    def _frame(self, request):
        number = int(request.get("frame") or 0)
        if not 0 <= number < len(self.frames):
            raise Refused("没有这一层调用")
        return self.frames[number][0]

    def _owner(self, request):
        number = int(request.get("handle") or 0)
        if not 1 <= number <= len(self.handles):
            raise Refused("这个值已不可用")
        return self.handles[number - 1]

    def children(self, request):
        owner, path = self._owner(request)
        first, count = int(request.get("first") or 0), int(request.get("count") or 100)
        if type(owner) is Scope:
            last = min(len(owner.entries), max(0, first) + min(max(0, count), 200))
            entries = [(name, value, owner.store is not None) for name, value in owner.entries[max(0, first):last]]
            total = len(owner.entries)
        else:
            entries, total = self.reader.page_of(owner, first, count), self.reader.count_of(owner)
        values = [self.described(name[:NAME], value, path + (name,), settable, max(0, first) + place)
                  for place, (name, value, settable) in enumerate(entries)]
        self.opened[path] = max(self.opened.get(path, (0, 0))[0], max(0, first) + len(values)), total
        return {"values": values, "total": total}

    def set(self, request):
        owner, path = self._owner(request)
        name, index = str(request.get("name") or ""), int(request.get("index") or 0)
        value = self._evaluated(request, only_value=True)
        if type(owner) is Scope:
            if owner.store is None:
                raise Refused("这里的值不能修改")
            owner.store(name, value)
            owner.entries = [(known, value if known == name else old) for known, old in owner.entries]
        elif not self._limited(lambda: self.reader.set_inside(owner, index, name, value), EVALUATE_SECONDS):
            raise Refused("这里的值不能修改")
        return {"values": [self.described(name[:NAME], value, path + (name,), True, index)], "total": 1}

    def evaluate(self, request):
        value = self._evaluated(request)
        return {"values": [self.described("", value, ("=", request.get("expression")))], "total": 1}

    def _watch(self, text):
        self.spent = 0.0
        try:
            value = self._evaluated({"expression": text}, only_value=True)
            return self.described(text[:NAME], value, ("?", text))
        except self.host.Stopped:
            raise
        except BaseException as error:
            return {"name": text[:NAME], "error": self._reason(error)}

    def _evaluated(self, request, only_value=False):
        """The value of an expression; None for a statement, which is carried out."""
        frame, text = self._frame(request), str(request.get("expression") or "")
        try:
            expression = Expression(text)
        except SyntaxError:
            if only_value:
                raise
            expression = Expression(text, "exec")
        return self._limited(lambda: value_in(frame, expression), EVALUATE_SECONDS)
