# SPDX-License-Identifier: Apache-2.0
"""程序可以向工作站和应用页面请求的一切：日志、参数、表格、对话框、浏览器。

每个程序开头就有 rpa，不需要 import。
"""

# What the program editor shows of rpa_api.py; a test compares the two.

from typing import Any, Literal

_Row = dict[str, Any]
_Rows = list[_Row] | list[list[Any]]

class Rows:
    """由 rows_of 得到的各行，交给 filter_rows 等函数处理。"""

    names: list[str]
    """列名。"""
    rows: list[Any]
    """各行，不含列名。"""

def log(text: Any, level: Literal["debug", "info", "warning", "error"] = "info") -> None:
    """向运行日志写一行。

    text：要写的内容，任何值都可以。
    level：级别，默认是 "info"；"warning" 和 "error" 在日志中用别的颜色显示。
    """

def get_param(name: str) -> Any:
    """读取页面上一个参数的值。

    name：参数的名称。没有这个参数时运行失败。
    密码参数的值只能填写到网页的密码框中。
    """

def set_param(name: str, value: Any) -> None:
    """修改页面上一个参数的值，页面立即显示。

    value：新的值；多个文件或多个选项用列表。
    """

def set_progress(name: str, percent: float) -> None:
    """设置页面上的进度条。

    percent：0 到 100，超出时取最近的一端。
    """

def set_picture(name: str, path: str) -> None:
    """在页面上显示一张图片。

    path：图片文件的路径；空文字表示不显示图片。
    """

def table_columns() -> list[str]:
    """页面表格的列名，按显示的顺序。"""

def table_count() -> int:
    """页面表格的行数。"""

def table_rows() -> list[_Row]:
    """页面表格的所有行；每行是一个字典，键是列名。"""

def table_get(row: int, column: int | str) -> Any:
    """读取页面表格的一个单元格。

    row：行号，从 0 开始。
    column：列名，或从 0 开始的列号。
    """

def table_set(row: int, column: int | str, value: Any) -> None:
    """修改页面表格的一个单元格。

    row：行号，从 0 开始。
    column：列名，或从 0 开始的列号。
    """

def table_append(values: list[Any] | _Row) -> int:
    """在页面表格末尾添加一行。

    values：按列的顺序排列的值，或以列名为键的字典。
    """

def table_clear() -> None:
    """删除页面表格的所有行。"""

def table_fill(rows: _Rows) -> None:
    """用这些行替换页面表格的所有行；放不下时表格保持不变。

    rows：字典的列表；或列表的列表，第一行是列名。
    """

def rows_of(source: Literal["page", "rows"], rows: _Rows | None) -> Rows:
    """取得要处理的各行。

    source："page" 表示页面表格，"rows" 表示第二个参数。
    rows：字典的列表；或列表的列表，第一行是列名。source 是 "page" 时填 None。
    """

def filter_rows(
    rows: Rows,
    column: str,
    comparison: Literal[
        "equals", "differs", "greater", "at_least", "less", "at_most", "contains", "lacks", "begins", "ends", "empty", "filled"
    ],
    value: Any,
) -> list[Any]:
    """留下符合条件的行。

    rows：由 rows_of 得到。
    column：要比较的列。
    comparison：怎样比较，例如 "equals" 等于、"greater" 大于、"contains" 包含、"empty" 为空。
    value：与它比较的值。
    """

def sort_rows(rows: Rows, columns: str, order: Literal["ascending", "descending"]) -> list[Any]:
    """按一列或几列排序；空单元格总在最后。

    rows：由 rows_of 得到。
    columns：列名，几列之间用逗号分隔。
    order："ascending" 升序，"descending" 降序。
    """

def unique_rows(rows: Rows, columns: str, keep: Literal["first", "last"]) -> list[Any]:
    """删除重复的行。

    rows：由 rows_of 得到。
    columns：比较哪些列，用逗号分隔；空文字表示所有列。
    keep：重复的行中留下第一行（"first"）还是最后一行（"last"）。
    """

def group_rows(
    rows: Rows, by: str, function: Literal["sum", "count", "average", "min", "max"], columns: str
) -> list[Any]:
    """按列分组并汇总，每组得到一行。

    rows：由 rows_of 得到。
    by：用来分组的列，几列之间用逗号分隔。
    function："sum" 合计，"count" 个数，"average" 平均，"min" 最小，"max" 最大。
    columns：要汇总的列；计算个数时可以是空文字。
    """

def join_rows(rows: Rows, others: _Rows, column: str, other_column: str, kind: Literal["inner", "left"]) -> list[Any]:
    """按相同的值把两份行合并成一份。

    rows：由 rows_of 得到。
    others：另一份行：字典的列表；或列表的列表，第一行是列名。
    column、other_column：两边用来对应的列；另一边的列名相同时填空文字。
    kind："inner" 只留下两边都有的行，"left" 留下左边的所有行。
    """

def message(text: Any) -> None:
    """显示一个消息框，等用户关闭后继续。"""

def confirm(text: Any) -> bool:
    """询问用户是或否；选择“是”时得到 True。"""

def ask(text: Any, value: Any = "") -> str | None:
    """请用户输入一行文字；用户取消时得到 None。

    text：显示给用户的说明。
    value：输入框中原有的文字。
    """

def browser_open(url: str) -> None:
    """在浏览器窗口中打开一个网址，等网页加载完成。"""

def browser_script(script: str) -> Any:
    """在当前网页中运行一段 JavaScript，得到它的结果。"""

def browser_click(element: str, timeout: float = 10) -> None:
    """单击网页上的元素。

    element：捕获的元素的标识。
    timeout：最多等待多少秒，元素一直没有出现则运行失败。
    """

def browser_input(element: str, text: Any, timeout: float = 10) -> None:
    """在网页的输入框中填写文字，原有的内容被替换。

    element：捕获的元素的标识。
    timeout：最多等待多少秒，元素一直没有出现则运行失败。
    """

def browser_read(element: str, timeout: float = 10) -> str:
    """读取网页上元素的文字，输入框则读取其中的内容。

    element：捕获的元素的标识。
    timeout：最多等待多少秒，元素一直没有出现则运行失败。
    """

def browser_wait(element: str, timeout: float = 10) -> None:
    """等待网页上的元素出现。

    element：捕获的元素的标识。
    timeout：最多等待多少秒，元素一直没有出现则运行失败。
    """

def browser_table(element: str, timeout: float = 10) -> list[list[str]]:
    """读取网页上的一个表格；得到各行，每行是各单元格文字的列表。

    element：捕获的表格或其中任一元素的标识。
    timeout：最多等待多少秒，元素一直没有出现则运行失败。
    """
