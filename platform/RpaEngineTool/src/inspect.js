// Describes the element at a point of the page: function (x, y, picked). While the mouse only moves (picked is
// false) what is marked is enough; how to find the element again is worked out for the one that was picked.
(function (x, y, picked) {
    "use strict";

    const KINDS = {
        A: "链接", BUTTON: "按钮", SELECT: "下拉框", TEXTAREA: "输入框", IMG: "图片", TABLE: "表格",
        TD: "单元格", TH: "单元格", LI: "列表项", FORM: "表单", H1: "标题", H2: "标题", H3: "标题",
        LABEL: "标签", OPTION: "选项"
    };
    const INPUTS = {
        button: "按钮", submit: "按钮", reset: "按钮", image: "按钮", checkbox: "复选框", radio: "单选框",
        file: "文件框", range: "滑块", password: "密码框"
    };
    // The first that names one element of the page is taken: what people gave it on purpose stays longest.
    const TELLING = ["data-testid", "data-test", "data-qa", "data-cy", "id", "name", "aria-label", "placeholder",
                     "alt", "for", "title", "href", "role"];
    const KEPT = TELLING.concat(["type", "class"]);
    const LONGEST_VALUE = 200;

    const short = (text, length) => (text || "").replace(/\s+/g, " ").trim().slice(0, length);
    const tagOf = element => element.tagName.toLowerCase();

    function kindOf(element) {
        if (element.tagName === "INPUT")
            return INPUTS[element.type] || "输入框";
        const role = element.getAttribute("role");
        return KINDS[element.tagName] || (role === "button" ? "按钮" : role === "link" ? "链接" : "元素");
    }

    // A label around a field or a list says the choices too, and what was typed is nobody's name.
    function wordsOf(element) {
        if (!element.querySelector("select,textarea,datalist"))
            return element.innerText;
        const copy = element.cloneNode(true);
        copy.querySelectorAll("select,textarea,datalist,script,style").forEach(part => part.remove());
        return copy.textContent;
    }

    // By characters, so that none is cut in half.
    const brief = text => Array.from(short(text, 400)).slice(0, 20).join("").trim();

    function caption(element) {
        const isField = /^(INPUT|TEXTAREA|SELECT)$/.test(element.tagName);
        const isButton = element.tagName === "INPUT" && INPUTS[element.type] === "按钮";
        // What is typed into a field is the user's; it may be a secret.
        const candidates = [
            element.labels && element.labels.length ? wordsOf(element.labels[0]) : "", element.getAttribute("aria-label"),
            isField ? "" : wordsOf(element), isButton ? element.value : "", element.getAttribute("placeholder"),
            element.getAttribute("alt"), element.getAttribute("title"), element.getAttribute("name"), element.id
        ];
        const told = candidates.map(brief).map(text => text.replace(/[\s:：*＊]+$/, ""));
        return told.find(text => text) || "";
    }

    // "密码" and "密码框" are one word.
    function nameOf(element) {
        const said = caption(element);
        const kind = kindOf(element);
        return said.includes(kind) ? said : kind.startsWith(said) ? kind : said + kind;
    }

    // Numbers and hashes that a program made will be others tomorrow.
    function isMade(value) {
        return /\d{4,}|[0-9a-f]{8,}|^:.*:$|^(ember|react|ext-|yui|radix|mui-|__)/i.test(value) ||
            (/\d/.test(value) && /^[A-Za-z0-9]{6,}$/.test(value) && /\d.*[a-z].*\d/i.test(value));
    }

    function isStable(name, value) {
        if (!value || value.length > LONGEST_VALUE || /[\n\r]/.test(value))
            return false;
        return !/^(id|name|for)$/.test(name) || !isMade(value);
    }

    const cssText = value => '"' + CSS.escape(value).replace(/\\([^0-9a-f\\"\s])/gi, "$1") + '"';

    function isOnlyOne(css, element) {
        try {
            const found = document.querySelectorAll(css);
            return found.length === 1 && found[0] === element;
        } catch (error) {
            return false;
        }
    }

    function telling(element) {
        for (const name of TELLING) {
            const value = element.getAttribute(name);
            if (!isStable(name, value))
                continue;
            const css = name === "id" ? "#" + CSS.escape(value)
                                      : tagOf(element) + "[" + name + "=" + cssText(value) + "]";
            if (isOnlyOne(css, element))
                return css;
        }
        return "";
    }

    function place(element) {
        let number = 1;
        let sibling = element;
        while ((sibling = sibling.previousElementSibling))
            number += sibling.tagName === element.tagName ? 1 : 0;
        return number;
    }

    // From the nearest ancestor that can be told down to the element.
    function cssOf(element) {
        const own = telling(element);
        if (own)
            return own;
        const steps = [];
        for (let at = element; at && at !== document.documentElement; at = at.parentElement) {
            const anchor = at === element ? "" : telling(at);
            if (anchor)
                return anchor + " > " + steps.join(" > ");
            steps.unshift(CSS.escape(tagOf(at)) + ":nth-of-type(" + place(at) + ")");
        }
        return steps.length ? "html > " + steps.join(" > ") : "html";
    }

    function xpathText(value) {
        if (!value.includes('"'))
            return '"' + value + '"';
        if (!value.includes("'"))
            return "'" + value + "'";
        return 'concat("' + value.split('"').join("\", '\"', \"") + '")';
    }

    function evaluated(xpath) {
        try {
            return document.evaluate(xpath, document, null, XPathResult.ORDERED_NODE_SNAPSHOT_TYPE, null);
        } catch (error) {
            return {snapshotLength: 0};
        }
    }

    // Drawings have a name space, for which a plain name does not stand.
    const xpathTag = element => element.namespaceURI === "http://www.w3.org/1999/xhtml"
        ? tagOf(element) : "*[local-name()=" + xpathText(element.localName) + "]";

    // By what it says, which often outlives how it is built; else by its place.
    function xpathOf(element) {
        const says = short(element.innerText, 61);
        if (/^(A|BUTTON|LABEL|TH|H[1-6])$/.test(element.tagName) && says && says.length <= 60) {
            const byText = "//" + xpathTag(element) + "[normalize-space()=" + xpathText(says) + "]";
            const found = evaluated(byText);
            if (found.snapshotLength === 1 && found.snapshotItem(0) === element)
                return byText;
        }
        const steps = [];
        for (let at = element; at; at = at.parentElement) {
            if (at !== element && at.id && !isMade(at.id) && isOnlyOne("#" + CSS.escape(at.id), at))
                return "//*[@id=" + xpathText(at.id) + "]/" + steps.join("/");
            let number = 1;
            for (let other = at.previousElementSibling; other; other = other.previousElementSibling)
                number += other.localName === at.localName && other.namespaceURI === at.namespaceURI ? 1 : 0;
            steps.unshift(xpathTag(at) + "[" + number + "]");
        }
        return "/" + steps.join("/");
    }

    function attributesOf(element) {
        const kept = {tag: tagOf(element)};
        for (const name of KEPT) {
            const value = element.getAttribute(name);
            if (value)
                kept[name] = value.slice(0, 1000);
        }
        // The value of a choice or a button is its author's; that of any other field is its user's.
        const isChoice = element.tagName === "INPUT" && /^(radio|checkbox|submit|button|reset)$/.test(element.type);
        if (isChoice && element.getAttribute("value"))
            kept.value = element.getAttribute("value").slice(0, 1000);
        if (element.labels && element.labels.length)
            kept.label = short(element.labels[0].innerText, 200);
        if (!/^(INPUT|TEXTAREA|SELECT)$/.test(element.tagName))
            kept.text = short(element.innerText, 200);
        return kept;
    }

    const element = document.elementFromPoint(x, y);
    if (!element)
        return null;
    const box = element.getBoundingClientRect();
    const name = nameOf(element);
    const told = {rect: [box.left, box.top, box.width, box.height], label: name};
    if (picked) {
        told.name = name;
        told.frame = /^(IFRAME|FRAME|OBJECT|EMBED)$/.test(element.tagName);
        told.css = cssOf(element);
        told.xpath = xpathOf(element);
        told.attributes = attributesOf(element);
        if (!isOnlyOne(told.css, element))
            told.css = "";
        const byPath = evaluated(told.xpath);
        if (byPath.snapshotLength !== 1 || byPath.snapshotItem(0) !== element)
            told.xpath = "";
    }
    return told;
})
