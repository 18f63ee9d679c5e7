// Finds a captured element on the page as it is now and acts on it: function (node, act, reads, isSecret).
// Pages change. What stands where the element stood is believed only when it still is the same kind of thing and at
// least one of the things that told it at its capture still agrees; several matches are no match.
(function (node, act, reads, isSecret) {
    "use strict";

    const captured = node.attributes || {};
    const TELLING = ["name", "id", "data-testid", "data-test", "data-qa", "data-cy", "label", "aria-label",
                     "placeholder", "alt", "title", "role", "value", "text"];

    const short = text => (text || "").replace(/\s+/g, " ").trim().slice(0, 200);
    const isField = element => /^(INPUT|TEXTAREA|SELECT)$/.test(element.tagName);

    const GIVEN = {
        label: element => short(element.labels && element.labels.length ? element.labels[0].innerText : ""),
        text: element => isField(element) ? "" : short(element.innerText)
    };
    const given = (element, key) => GIVEN[key] ? GIVEN[key](element) : element.getAttribute(key) || "";

    // "TEXT", a missing type and one that no browser knows are all the same type.
    function capturedType(tag) {
        const probe = document.createElement(tag);
        if (captured.type)
            probe.setAttribute("type", captured.type);
        return probe.type;
    }

    function isSameKind(element) {
        if (!captured.tag)
            return true;
        const tag = element.tagName.toLowerCase();
        if (tag !== captured.tag)
            return false;
        if (/^(input|button)$/.test(tag) && element.type !== capturedType(tag))
            return false;
        // Choices of one question share their name; only the value tells them apart.
        const isChoice = tag === "input" && /^(radio|checkbox)$/.test(element.type);
        return !isChoice || !captured.value || element.getAttribute("value") === captured.value;
    }

    function isBelieved(element) {
        if (!isSameKind(element))
            return false;
        const told = TELLING.filter(key => captured[key]);
        if (!told.length || told.some(key => given(element, key).slice(0, 1000) === captured[key]))
            return true;
        // What is read may well say something new; that is why it is read.
        return reads && told.every(key => key === "text");
    }

    function byCss() {
        try {
            return node.css ? Array.from(document.querySelectorAll(node.css)) : [];
        } catch (error) {
            return [];
        }
    }

    function byXpath() {
        try {
            const found = node.xpath ? document.evaluate(node.xpath, document, null,
                XPathResult.ORDERED_NODE_SNAPSHOT_TYPE, null) : {snapshotLength: 0};
            return Array.from({length: found.snapshotLength}, (unused, index) => found.snapshotItem(index));
        } catch (error) {
            return [];
        }
    }

    let reason = "missing";
    for (const matches of [byCss(), byXpath()]) {
        // Its place among several that are told alike says nothing.
        if (matches.length > 1)
            return {found: false, reason: "several"};
        if (matches.length === 1 && isBelieved(matches[0])) {
            if (isSecret && matches[0].type !== "password")
                return {found: false, reason: "secret"};
            return {found: true, value: act(matches[0])};
        }
        if (matches.length)
            reason = "changed";
    }
    return {found: false, reason: reason};
})
