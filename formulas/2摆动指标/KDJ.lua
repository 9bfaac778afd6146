-- 收盘价在最近区间里的位置，及其平滑。
formula {
  name = "KDJ", type = 0,
  text = "随机指标",
  source = "George Lane, Lane's Stochastics, Technical Analysis of Stocks & Commodities, 1984",
  parameters = {
    {"N", 9, min = 1, max = 240, text = "区间的分钟数"},
    {"M1", 3, min = 1, max = 100, text = "K 的平滑"},
    {"M2", 3, min = 1, max = 100, text = "D 的平滑"},
  },
  lines = {{"K", precision = 2}, {"D", precision = 2}, {"J", precision = 2}},
}

function run()
  local low = LLV(LOW, N)
  local rsv = (CLOSE - low) / (HHV(HIGH, N) - low) * 100
  local k = SMA(rsv, M1, 1)
  local d = SMA(k, M2, 1)
  return k, d, 3 * k - 2 * d
end
