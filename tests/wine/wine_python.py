# SPDX-License-Identifier: Apache-2.0
"""The Linux half of wine_python.exe: runs Python with the given arguments and carries what goes in and out.

Started as: python3 -I wine_python.py PORT. The first connection to it brings the arguments and takes the exit code; when
it ends before, the program's work is over. The second is standard input and output.
"""

import ctypes
import os
import signal
import socket
import struct
import subprocess
import sys
import threading

PYTHON = "/usr/bin/python3"
NUMBER = struct.Struct("<i")
PART_BYTES = 65536
PR_SET_PDEATHSIG = 1
DRAIN_SECONDS = 1


def connect(port):
    return socket.create_connection(("127.0.0.1", port))


def read_exactly(connection, count):
    data = b""
    while len(data) < count:
        part = connection.recv(count - len(data))
        if not part:
            sys.exit(1)
        data += part
    return data


def read_number(connection):
    return NUMBER.unpack(read_exactly(connection, NUMBER.size))[0]


def read_arguments(control):
    return [read_exactly(control, read_number(control)).decode() for _ in range(read_number(control))]


def die_with_parent():
    ctypes.CDLL(None).prctl(PR_SET_PDEATHSIG, signal.SIGKILL)


def start(arguments):
    # In a PID namespace, so that nothing it starts outlives it: that is what Wine's jobs cannot do to Linux programs.
    group = ["unshare", "--pid", "--fork", "--kill-child"]
    if os.geteuid() != 0:
        group += ["--user", "--map-current-user"]
    return subprocess.Popen([*group, PYTHON, *arguments], stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                            stderr=subprocess.STDOUT, start_new_session=True, preexec_fn=die_with_parent)


def carry_input(data, process):
    try:
        while part := data.recv(PART_BYTES):
            process.stdin.write(part)
            process.stdin.flush()
        process.stdin.close()
    except OSError:
        pass  # it does not read any more


def carry_output(process, data):
    try:
        while part := process.stdout.read1(PART_BYTES):
            data.sendall(part)
    except OSError:
        pass  # nobody reads any more


def watch(control, process):
    """Nothing comes after the arguments, so what comes is the end of the other half."""
    control.recv(1)
    process.kill()


def main():
    port = int(sys.argv[1])
    control, data = connect(port), connect(port)
    process = start(read_arguments(control))
    threading.Thread(target=carry_input, args=(data, process), daemon=True).start()
    threading.Thread(target=watch, args=(control, process), daemon=True).start()
    output = threading.Thread(target=carry_output, args=(process, data), daemon=True)
    output.start()
    code = process.wait()
    # Its children may still hold the output open.
    output.join(DRAIN_SECONDS)
    data.shutdown(socket.SHUT_WR)
    control.sendall(NUMBER.pack(code))
    os._exit(0)


main()
