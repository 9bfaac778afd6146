"""Writes data/orders.xls, a sheet of orders as a user has it from elsewhere (needs python3-xlwt)."""

import datetime
from pathlib import Path

import xlwt

ROWS = [
    ["账号", "证券", "编号", "价格", "数量", "时间", "方向", "备注"],
    ["80010001", "SH600000", "o1", 9.87, 300, datetime.time(9, 31, 5), 49, "手工"],
    [80010001, "SH600000", "多\n行\t格", 10, 1000000, datetime.datetime(2026, 11, 20, 10, 15, 7), 48, None],
    ["out", "SZ000001", None, 0.1 + 0.2, 100, 1433122200, 48, True],
]
STYLES = {datetime.time: "hh:mm:ss", datetime.datetime: "yyyy-mm-dd hh:mm:ss"}


def main():
    book = xlwt.Workbook(encoding="utf-8")
    sheet = book.add_sheet("委托")
    for row, cells in enumerate(ROWS):
        for column, cell in enumerate(cells):
            style = xlwt.easyxf(num_format_str=STYLES[type(cell)]) if type(cell) in STYLES else xlwt.Style.default_style
            if cell is not None:
                sheet.write(row, column, cell, style)
    book.add_sheet("另一张").write(0, 0, "不读")
    book.save(str(Path(__file__).parent / "data" / "orders.xls"))


if __name__ == "__main__":
    main()
