# SPDX-License-Identifier: Apache-2.0
"""What the author wants to see of a program that failed: the calls that led there, and the variables at that moment."""

import threading
import time

from debug_scopes import scopes_of
from debug_values import NAME, TEXT, Reader, kind_of

FRAMES = 50
VARIABLES = 200
REPR_SECONDS = 0.3
ALL_SECONDS = 1.5


class _Asker:
    """Runs foreign code on a thread that is left behind when it takes too long: the process ends soon."""

    def __init__(self):
        self.gives_up = time.monotonic() + ALL_SECONDS

    def ask(self, call):
        seconds = min(REPR_SECONDS, self.gives_up - time.monotonic())
        if seconds <= 0:
            return False, "未显示"
        answer = []
        asked = threading.Thread(target=self._answer, args=(call, answer), daemon=True)
        asked.start()
        asked.join(seconds)
        return answer[0] if answer else (False, "显示超时")

    @staticmethod
    def _answer(call, answer):
        try:
            answer.append((True, call()))
        except BaseException as error:
            answer.append((False, f"无法显示（{type(error).__name__}）"))


def details_of(error, program_file, call_failed):
    """{"stack": [[function, line]], "scopes": [[title, [[name, type, text]]]]}, the innermost call first."""
    frames, entry = [], error.__traceback__
    while entry is not None:
        if entry.tb_frame.f_code.co_filename == program_file:
            frames.append((entry.tb_frame, entry.tb_lineno))
        entry = entry.tb_next
    if not frames:
        return {}
    frames.reverse()
    reader = Reader(_Asker().ask)
    stack = [[frame.f_code.co_name[:NAME], line] for frame, line in frames[:FRAMES]]
    scopes = [[scope.title, [_variable(reader, *entry) for entry in scope.entries[:VARIABLES]]]
              for scope in scopes_of(frames[0][0], call_failed)]
    return {"stack": stack, "scopes": scopes}


def _variable(reader, name, value):
    return [str(name)[:NAME], kind_of(value), reader.short(value)[:TEXT + 3]]
