-- 成交量和它的两条平均线，柱子按涨跌着色。
formula {
  name = "VOL", type = 0,
  text = "成交量",
  source = "Robert D. Edwards, John Magee, Technical Analysis of Stock Trends, 1948",
  parameters = {
    {"M1", 5, min = 1, max = 240, text = "短期平均"},
    {"M2", 10, min = 1, max = 240, text = "长期平均"},
  },
  lines = {{"VOL", style = "VOLSTICK", precision = 0}, {"MAVOL1", precision = 0}, {"MAVOL2", precision = 0}},
}

function run()
  local before = DEFAULT(REF(CLOSE, 1), CLOSE)
  local volume = COLOR(COLOR(VOL, COLORRISE, GT(CLOSE, before)), COLORFALL, LT(CLOSE, before))
  return volume, MA(VOL, M1), MA(VOL, M2)
end
