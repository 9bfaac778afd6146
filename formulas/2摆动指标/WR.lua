-- 收盘价离最近区间上端的百分比。
formula {
  name = "WR", type = 0,
  text = "威廉指标",
  source = "Larry Williams, How I Made One Million Dollars Last Year Trading Commodities, 1973",
  parameters = {
    {"N1", 10, min = 2, max = 240, text = "长期"},
    {"N2", 6, min = 2, max = 240, text = "短期"},
  },
  lines = {{"WR1", precision = 2}, {"WR2", precision = 2}},
}

local function percent(n)
  local high = HHV(HIGH, n)
  return (high - CLOSE) / (high - LLV(LOW, n)) * 100
end

function run()
  return percent(N1), percent(N2)
end
