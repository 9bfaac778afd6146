-- 价格偏离平均线的百分比。
formula {
  name = "BIAS", type = 0,
  text = "乖离率",
  source = "中国证券业协会《证券投资分析》, 2012",
  parameters = {
    {"N1", 6, min = 1, max = 240, text = "短期"},
    {"N2", 12, min = 1, max = 240, text = "中期"},
    {"N3", 24, min = 1, max = 240, text = "长期"},
  },
  lines = {{"BIAS1", precision = 3}, {"BIAS2", precision = 3}, {"BIAS3", precision = 3}},
}

local function bias(n)
  local average = MA(CLOSE, n)
  return (CLOSE - average) / average * 100
end

function run()
  return bias(N1), bias(N2), bias(N3)
end
