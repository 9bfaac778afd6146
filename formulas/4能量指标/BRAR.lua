-- 人气：离开盘价的上下幅度之比；意愿：离前一分钟收盘价的上下幅度之比。
formula {
  name = "BRAR", type = 0,
  text = "人气意愿指标",
  source = "Nippon Technical Analysts Association, Analysis of Stock Prices in Japan, 1989",
  parameters = {{"N", 26, min = 2, max = 240, text = "分钟数"}},
  lines = {{"BR", precision = 2}, {"AR", precision = 2}},
}

function run()
  local before = REF(CLOSE, 1)
  local open = DEFAULT(OPEN, before)
  local br = SUM(MAX(0, HIGH - before), N) / SUM(MAX(0, before - LOW), N) * 100
  local ar = SUM(HIGH - open, N) / SUM(open - LOW, N) * 100
  return br, ar
end
