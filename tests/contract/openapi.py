# SPDX-License-Identifier: Apache-2.0
"""The part of OpenAPI that the contract of the version service uses: operations, answers, and a schema check."""

import re

import yaml

METHODS = ("get", "post", "put", "patch", "delete")


class Contract:
    def __init__(self, file_name):
        with open(file_name, encoding="utf-8") as file:
            self.document = yaml.safe_load(file)

    def resolve(self, node):
        while "$ref" in node:
            target = self.document
            for step in node["$ref"].lstrip("#/").split("/"):
                target = target[step]
            node = target
        return node

    def operations(self):
        """{(method, path): operation}"""
        return {
            (method.upper(), path): item[method]
            for path, item in self.document["paths"].items()
            for method in METHODS
            if method in item
        }

    def access(self, operation):
        if "x-access" in operation:
            return operation["x-access"]
        return "public" if operation.get("security") == [] else "signed-in"

    def parameters(self, method, path):
        item = self.document["paths"][path]
        return [self.resolve(p) for p in item.get("parameters", []) + item[method.lower()].get("parameters", [])]

    def statuses(self, operation):
        return {int(status) for status in operation["responses"]}

    def schema_faults(self, operation, status, content_type, value):
        """Why a body is not what the contract says; an empty list when it is."""
        response = self.resolve(operation["responses"][str(status)])
        content = response.get("content", {})
        if not content:
            return [] if value is None else ["a body where none is documented"]
        kind = content_type.split(";")[0]
        if kind not in content:
            return [f"content type {content_type}"]
        return list(self._faults(content[kind]["schema"], value, "body"))

    def header_faults(self, operation, status, headers):
        response = self.resolve(operation["responses"][str(status)])
        return [f"header {name} is missing" for name in response.get("headers", {}) if name not in headers]

    def _faults(self, schema, value, where):
        schema = self.resolve(schema)
        kinds = {"object": dict, "array": list, "string": str, "integer": int, "boolean": bool}
        kind = kinds[schema["type"]]
        if not isinstance(value, kind) or (kind is int and isinstance(value, bool)):
            yield f"{where} is no {schema['type']}: {value!r}"
            return
        if "enum" in schema and value not in schema["enum"]:
            yield f"{where} is {value!r}"
        if "pattern" in schema and not re.match(schema["pattern"], value):
            yield f"{where} is {value!r}"
        if kind is dict and "properties" in schema:
            for name in schema.get("required", []):
                if name not in value:
                    yield f"{where}.{name} is missing"
            for name in value:
                if name not in schema["properties"]:
                    yield f"{where}.{name} is not documented"
                else:
                    yield from self._faults(schema["properties"][name], value[name], f"{where}.{name}")
        if kind is list:
            for index, item in enumerate(value):
                yield from self._faults(schema["items"], item, f"{where}[{index}]")
