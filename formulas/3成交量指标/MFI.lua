-- 以成交额为权重的相对强弱。
formula {
  name = "MFI", type = 0,
  text = "资金流量指标",
  source = "Gene Quong, Avrum Soudack, Volume-weighted RSI: Money Flow, Technical Analysis of Stocks & Commodities, 1989",
  parameters = {{"N", 14, min = 2, max = 240, text = "分钟数"}},
  lines = {{"MFI", precision = 2}},
}

function run()
  local typical = (HIGH + LOW + CLOSE) / 3
  local change = typical - REF(typical, 1)
  local inflow = SUM(IF(GT(change, 0), typical * VOL, 0), N)
  local outflow = SUM(IF(LT(change, 0), typical * VOL, 0), N)
  return inflow / (inflow + outflow) * 100
end
