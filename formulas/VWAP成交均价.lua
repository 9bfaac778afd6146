-- 成交量加权平均价，以每分钟的典型价格代表该分钟的成交。
formula {
  name = "VWAP成交均价", type = 1,
  text = "成交量加权平均价",
  source = "Stephen Berkowitz, Dennis Logue, Eugene Noser, The Total Cost of Transactions on the NYSE, Journal of Finance, 1988",
  parameters = {{"N", 0, min = 0, max = 1000, text = "分钟数，0 为从开盘起"}},
  lines = {{"VWAP"}},
}

function run()
  local typical = (HIGH + LOW + CLOSE) / 3
  return SUM(typical * VOL, N) / SUM(VOL, N)
end
