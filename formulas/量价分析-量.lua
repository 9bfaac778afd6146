-- 组合的成交量；第二个值是市值的变化，决定柱子的颜色。
formula {
  name = "量价分析-量", type = 2,
  text = "组合成交量",
  source = "Robert D. Edwards, John Magee, Technical Analysis of Stock Trends, 1948",
  lines = {{"成交量", style = "VOLSTICK", precision = 0}},
}

function run()
  local before = DEFAULT(REF(CLOSE, 1), CLOSE)
  return COLOR(COLOR(VOL, COLORRISE, GT(CLOSE, before)), COLORFALL, LT(CLOSE, before))
end
