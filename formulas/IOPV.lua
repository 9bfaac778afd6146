-- 基金份额参考净值由交易所随行情发布，不能从成交价推算。行情里没有它时，这条线没有值。
formula {
  name = "IOPV", type = 1,
  text = "基金份额参考净值",
  source = "上海证券交易所《交易型开放式指数基金业务实施细则》, 2004",
  lines = {{"IOPV", style = "DOTLINE"}},
}

function run()
  return NAN
end
