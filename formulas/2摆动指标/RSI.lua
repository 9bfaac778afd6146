-- 上涨占全部涨跌的百分比，各取平滑平均。
formula {
  name = "RSI", type = 0,
  text = "相对强弱指标",
  source = "J. Welles Wilder, New Concepts in Technical Trading Systems, 1978",
  parameters = {
    {"N1", 6, min = 2, max = 240, text = "短期"},
    {"N2", 12, min = 2, max = 240, text = "中期"},
    {"N3", 24, min = 2, max = 240, text = "长期"},
  },
  lines = {{"RSI1", precision = 2}, {"RSI2", precision = 2}, {"RSI3", precision = 2}},
}

function run()
  local change = CLOSE - REF(CLOSE, 1)
  local function strength(n)
    return SMA(MAX(change, 0), n, 1) / SMA(ABS(change), n, 1) * 100
  end
  return strength(N1), strength(N2), strength(N3)
end
