# SPDX-License-Identifier: Apache-2.0
"""Makes jedi list the names of a class without looking at every name of the class's module.

jedi asks each name of a module whether it belongs to the class, for every class of a hierarchy; for builtins that is
most of the time of a completion. Here only the names are asked that are defined between the first and the last line of
the class; what jedi then makes of them is the same. Where jedi's parts are not as known here nothing is changed.
"""

import bisect
import weakref

_definitions = weakref.WeakKeyDictionary()


def _sorted_definitions(cache_node, used_names, definition_names):
    """(place, name) of all definitions of a module, kept as long as jedi keeps its tree."""
    try:
        return _definitions[cache_node]
    except KeyError:
        found = sorted((name.start_pos, key) for key in used_names
                       for name in definition_names(cache_node, used_names, key))
        _definitions[cache_node] = found
        return found


def quicken():
    try:
        from jedi.inference import filters
        kind = filters._AbstractUsedNamesFilter
        definition_names = filters._get_definition_names
        plain = kind.values
    except (ImportError, AttributeError):
        return False

    def values(self):
        node = self._parso_cache_node
        scope = self._parser_scope
        # Without a node the tree is the text that is being edited.
        if node is None or scope.type != "classdef":
            return plain(self)
        all_names = _sorted_definitions(node, self._used_names, definition_names)
        first = bisect.bisect_left(all_names, (scope.start_pos, ""))
        last = bisect.bisect_left(all_names, (scope.end_pos, ""))
        keys = dict.fromkeys(key for _, key in all_names[first:last])
        return self._convert_names(
            name for key in keys for name in self._filter(definition_names(node, self._used_names, key)))

    kind.values = values
    return True
