# SPDX-License-Identifier: Apache-2.0
"""What a client sends when it saves a version."""

import secrets

from server import digest

BODY = b'{"uiData":{"pages":[]},"processData":{"processes":[]},"a":1}'
OTHER = BODY.replace(b'"a":1', b'"a":2')


def save_headers(body=BODY, **more):
    headers = {"Content-Digest": digest(body), "Version-Name": secrets.token_hex(8), "Version-Api": "1.0"}
    headers.update({name.replace("_", "-"): value for name, value in more.items()})
    return {name: value for name, value in headers.items() if value is not None}
