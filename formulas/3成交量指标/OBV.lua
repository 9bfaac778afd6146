-- 累计成交量：上涨的分钟加，下跌的减。
formula {
  name = "OBV", type = 0,
  text = "能量潮",
  source = "Joseph E. Granville, Granville's New Key to Stock Market Profits, 1963",
  parameters = {{"M", 30, min = 1, max = 240, text = "平均的分钟数"}},
  lines = {{"OBV", precision = 0}, {"MAOBV", precision = 0}},
}

function run()
  local change = DEFAULT(CLOSE - REF(CLOSE, 1), 0)
  local obv = SUM(SGN(change) * VOL, 0)
  return obv, MA(obv, M)
end
