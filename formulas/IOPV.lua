-- 跟踪指数的基金，其份额参考净值为前一交易日的单位净值乘以指数自前收盘以来的涨跌。没有前日净值或跟踪指数时没有值。
formula {
  name = "IOPV", type = 1,
  text = "基金份额参考净值",
  source = "上海证券交易所《交易型开放式指数基金业务实施细则》, 2004",
  lines = {{"IOPV", style = "DOTLINE"}},
}

function run()
  return PREVNAV * UCLOSE / UPREVCLOSE
end
