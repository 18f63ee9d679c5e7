# SPDX-License-Identifier: Apache-2.0
"""What went wrong in a program, in the words of people who write no Python. What Python itself says stays in the trace."""

import dis
import errno
import json
import re

# What CPython says of code that it cannot read.
SYNTAX = [
    (r"invalid syntax\. Perhaps you forgot a comma\?", "写法不对，可能少了逗号"),
    (r"invalid syntax\. Maybe you meant '==' or ':=' instead of '='\?", "写法不对，比较是否相等要写两个等号“==”"),
    (r"cannot assign to (.+) here\. Maybe you meant '==' instead of '='\?", "这里不能赋值，比较是否相等要写两个等号“==”"),
    (r'expression cannot contain assignment, perhaps you meant "=="\?', "这里不能赋值，比较是否相等要写两个等号“==”"),
    (r"invalid syntax", "写法不对"),
    (r"expected ':'", "行尾少了冒号“:”"),
    (r"expected '(.+?)'(?: or '(.+?)' block)?", "少了“{0}”"),
    (r"'(.)' was never closed", "“{0}”没有配对的另一半"),
    (r"unmatched '(.)'", "“{0}”没有配对的另一半"),
    (r"closing parenthesis '(.)' does not match opening parenthesis '(.)'(?: on line (\d+))?", "“{0}”与前面的“{1}”不配对"),
    (r"unterminated .*string literal.*", "引号没有配对的另一半"),
    (r"unexpected indent", "这一行的缩进多了"),
    (r"unindent does not match any outer indentation level", "这一行的缩进与上文不一致"),
    (r"inconsistent use of tabs and spaces in indentation", "缩进混用了制表符和空格"),
    (r"expected an indented block after .* on line (\d+)", "第 {0} 行之后要有缩进的内容"),
    (r"invalid character '(.)' .*", "代码中不能使用“{0}”，请改用英文标点"),
    (r"invalid non-printable character .*", "代码中有看不见的字符，请删除后重新输入"),
    (r"invalid decimal literal", "数字后面紧跟着别的字符"),
    (r"invalid (?:hexadecimal|octal|binary) literal|.*leading zeros.*|invalid digit .*", "数字的写法不对"),
    (r"Missing parentheses in call to '(.+?)'.*", "“{0}”的内容要放在括号里"),
    (r"'(\w+)' outside (?:async )?function", "“{0}”只能写在函数里"),
    (r"'(break|continue)' (?:outside|not properly in) loop", "“{0}”只能写在循环里"),
    (r"cannot (?:assign to|delete) (.+)", "这里不能赋值或删除，等号左边要是变量"),
    (r"positional argument follows keyword argument.*", "没有名字的参数要写在有名字的参数之前"),
    (r"keyword argument repeated: (.+)", "参数“{0}”写了两次"),
    (r"duplicate argument '(.+)' in function definition", "参数“{0}”写了两次"),
    (r"(?:unexpected EOF.*|unexpected character after line continuation character)", "代码不完整，或行尾有多余的“\\”"),
    (r"f-string: .*", "f 字符串中花括号里的写法不对"),
    (r"name '(.+)' is (?:used|assigned to|parameter).*(?:global|nonlocal).*", "“{0}”要在使用之前声明"),
    (r"source code (?:string )?cannot contain null bytes", "代码中有看不见的字符，请删除后重新输入"),
]

# What CPython says of values, by the kind of error.
VALUES = [
    (r"invalid literal for int\(\) with base \d+: (.+)", "{0}不是整数"),
    (r"could not convert string to float: (.+)", "{0}不是数字"),
    (r"unsupported operand type\(s\) for (.+?): '(.+?)' and '(.+?)'", "“{0}”不能用于{1}和{2}"),
    (r"can only concatenate (\S+) \(not \"(.+?)\"\) to \S+", "{0}不能与{1}相连，请先转换"),
    (r"bad operand type for unary .: '(.+?)'", "这里要数字，不是{0}"),
    (r"can't multiply sequence by non-int of type '(.+?)'", "文本或列表不能乘以{0}"),
    (r"math domain error", "这个数不能这样计算"),
    (r"int too large to convert to float|.*(?:Result too large|result too large).*", "数太大"),
    (r"(?:int|float)\(\) argument must be .*, not '(.+?)'", "{0}不能转换为数字"),
    (r"(?:.* format: a |must be )(?:real )?number(?: is required)?, not (\S+)", "这里要数字，不是{0}"),
    (r"'(.+?)' not supported between instances of '(.+?)' and '(.+?)'", "{1}与{2}不能用“{0}”比较"),
    (r"'(.+?)' object is not iterable", "{0}不能逐项取出"),
    (r"cannot unpack non-iterable (\S+) object", "{0}不能逐项取出"),
    (r"'(.+?)' object is not callable", "{0}后面不能加括号"),
    (r"'(.+?)' object is not subscriptable", "{0}不能用方括号取其中的项"),
    (r"'(.+?)' object does not support item assignment", "{0}的内容不能修改"),
    (r"'(.+?)' object cannot be interpreted as an integer", "这里要整数，不是{0}"),
    (r"object of type '(.+?)' has no len\(\)", "{0}没有长度"),
    (r"list indices must be integers or slices, not (\S+)", "列表的序号要是整数，不是{0}"),
    (r"string indices must be integers, not '(.+?)'", "文本的序号要是整数，不是{0}"),
    (r"unhashable type: '(.+?)'", "{0}不能作为字典的键"),
    (r"(\S+?)\(\) missing \d+ required .*arguments?: (.+)", "“{0}”缺少参数{1}"),
    (r"(\S+?)\(\) got an unexpected keyword argument '(.+?)'", "“{0}”没有名为“{1}”的参数"),
    (r"(\S+?)\(\) takes .* (?:was|were) given", "“{0}”的参数个数不对"),
    (r"'(.+?)' object has no attribute '(.+?)'(?:\. Did you mean.*)?", "{0}没有“{1}”"),
    (r"module '(.+?)' has no attribute '(.+?)'.*", "模块“{0}”中没有“{1}”"),
    (r"cannot import name '(.+?)' from '(.+?)'.*", "“{1}”中没有“{0}”"),
    (r"time data (.+) does not match format .*", "{0}不是这种格式的日期"),
    (r"Invalid isoformat string: (.+)", "{0}不是日期"),
    (r"(?:year|month|day|hour|minute|second) .*(?:out of range|must be in).*|day is out of range for month", "没有这样的日期或时间"),
    (r"too many values to unpack.*|not enough values to unpack.*", "项数与变量的个数不一致"),
    (r"(.+) is not in list", "列表中没有{0}"),
    (r"substring not found", "找不到要找的文字"),
    (r"unknown url type: (.+)", "网址{0}不完整，要以 http:// 或 https:// 开头"),
    (r"Worksheet (.+) does not exist\.?", "工作簿中没有名为{0}的工作表"),
]

KINDS = {
    "NoneType": "空值", "bool": "是否", "int": "数字", "float": "数字", "str": "文本", "list": "列表", "tuple": "列表",
    "dict": "字典", "set": "集合", "bytes": "字节数据", "datetime": "日期", "datetime.datetime": "日期",
    "datetime.date": "日期", "date": "日期", "function": "函数", "Workbook": "工作簿", "Worksheet": "工作表",
}

SYSTEM = {
    errno.ENOSPC: "磁盘已满", errno.EEXIST: "已经存在", errno.EISDIR: "是文件夹，不是文件", errno.ENOTDIR: "不是文件夹",
    errno.ENOTEMPTY: "文件夹不是空的", errno.ENAMETOOLONG: "名称太长", errno.EROFS: "所在的磁盘不能写入",
    errno.EMFILE: "打开的文件太多", errno.EBUSY: "正在被使用", errno.EACCES: "没有权限访问", errno.EPERM: "没有权限访问",
    errno.ENOENT: "找不到",
}

NETWORK = {
    errno.ECONNREFUSED: "服务器没有应答（连接被拒绝）", errno.ECONNRESET: "连接被服务器中断",
    errno.EPIPE: "连接被服务器中断", errno.ENETUNREACH: "网络不通", errno.EHOSTUNREACH: "网络不通",
    errno.ETIMEDOUT: "服务器没有及时应答",
}

CAUSES = [
    (AttributeError, "没有这个属性或操作"), (TypeError, "值的类型不合适"), (ValueError, "值不合适"),
    (AssertionError, "断言不成立"), (LookupError, "找不到要找的项"), (ArithmeticError, "无法计算"),
    (ImportError, "扩展包无法载入"), (OSError, "无法读写文件或网络"),
]


def _word(found):
    """A kind by its Chinese name, a value in Chinese quotes, anything else as it stands."""
    if found in KINDS:
        return KINDS[found]
    return f"“{found[1:-1]}”" if len(found) > 1 and found[0] == found[-1] and found[0] in "'\"" else found


def _find(table, text):
    for pattern, words in table:
        found = re.fullmatch(pattern, text, re.DOTALL)
        if found:
            return words.format(*[_word(group or "") for group in found.groups()])
    return ""


def _is_chinese(text):
    return re.search("[\u4e00-\u9fff]", text) is not None


def _text(error):
    # A key that is missing tells its text as Python would write it.
    return str(error.args[0]) if isinstance(error, KeyError) and error.args else str(error)


def _is_authors(error, program_file):
    """Whether the program itself raised it; then its text is its author's, in whatever language."""
    place = error.__traceback__
    while place is not None and place.tb_next is not None:
        place = place.tb_next
    if place is None or place.tb_frame.f_code.co_filename != program_file:
        return False
    return dis.opname[place.tb_frame.f_code.co_code[place.tb_lasti]] == "RAISE_VARARGS"


def _of_network(error):
    """The reason of a connection that failed; empty for anything else."""
    reason = getattr(error, "reason", error)
    if isinstance(reason, TimeoutError):
        return NETWORK[errno.ETIMEDOUT]
    kind = type(reason).__name__
    if kind == "gaierror":
        return "找不到服务器，请检查网址和网络"
    if kind.startswith("SSL"):
        return "无法建立安全连接（服务器的证书没有通过检查）"
    return NETWORK.get(getattr(reason, "errno", None), "")


def _of_system(error):
    status = getattr(error, "code", None)
    if type(error).__name__ == "HTTPError" and isinstance(status, int):
        return f"服务器回答了错误 {status}"
    network = _of_network(error)
    if network:
        return network
    reason = SYSTEM.get(error.errno, "")
    return f"{reason}：{error.filename}" if reason and error.filename is not None else reason


def _of_workbook(error):
    """A file that was opened as a workbook and is none; empty for anything else."""
    if type(error).__name__ not in ("BadZipFile", "InvalidFileException"):
        return ""
    place = error.__traceback__
    while place is not None:
        if place.tb_frame.f_code.co_name == "load_workbook":
            return f"该文件不是 Excel 工作簿：{place.tb_frame.f_locals.get('filename')}"
        place = place.tb_next
    return "该文件不是有效的压缩文件"


def _of_code(error):
    return f"代码无法识别：{_find(SYNTAX, error.msg or '') or '写法不对'}"


def of(error, program_file):
    """One sentence about the error, without anything that only programmers read."""
    text = _text(error)
    if text and _is_authors(error, program_file):
        return text
    if isinstance(error, NameError) and getattr(error, "name", None):
        return f"变量“{error.name}”还没有值"
    if isinstance(error, ModuleNotFoundError):
        return f"缺少扩展包“{error.name}”，请先安装"
    if isinstance(error, FileNotFoundError):
        return f"找不到文件：{error.filename}"
    if isinstance(error, PermissionError):
        return f"没有权限访问：{error.filename}"
    if isinstance(error, ZeroDivisionError):
        return "除数不能为零"
    if isinstance(error, SyntaxError):
        return _of_code(error)
    if isinstance(error, json.JSONDecodeError):
        return f"不是有效的 JSON：第 {error.lineno} 行第 {error.colno} 个字符处无法识别"
    if isinstance(error, UnicodeError):
        return "文字的编码不符，请选择文件所用的编码"
    workbook = _of_workbook(error)
    if workbook:
        return workbook
    known = _of_system(error) if isinstance(error, OSError) else _find(VALUES, text)
    if known:
        return known
    if isinstance(error, KeyError) and not _is_chinese(text):
        return f"没有名为“{text}”的项"
    if isinstance(error, IndexError) and not _is_chinese(text):
        return "序号超出范围"
    # Who raised it with a text in Chinese said already what is wrong.
    if _is_chinese(text):
        return text
    return next((words for kind, words in CAUSES if isinstance(error, kind)), "运行出错")
