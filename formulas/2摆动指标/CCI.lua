-- 典型价格偏离其平均的程度，以平均绝对偏差为单位。
formula {
  name = "CCI", type = 0,
  text = "顺势指标",
  source = "Donald Lambert, Commodity Channel Index: Tools for Trading Cyclic Trends, Commodities, 1980",
  parameters = {{"N", 14, min = 2, max = 240, text = "分钟数"}},
  lines = {{"CCI", precision = 2}},
}

function run()
  local typical = (HIGH + LOW + CLOSE) / 3
  return (typical - MA(typical, N)) / (0.015 * AVEDEV(typical, N))
end
