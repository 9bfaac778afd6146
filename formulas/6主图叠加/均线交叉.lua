-- 两条平均线，上穿处画箭头，下穿处写字。
formula {
  name = "均线交叉", type = 1,
  text = "均线的金叉和死叉",
  source = "Robert D. Edwards, John Magee, Technical Analysis of Stock Trends, 1948",
  parameters = {
    {"N1", 5, min = 1, max = 1000, text = "短期"},
    {"N2", 20, min = 1, max = 1000, text = "长期"},
  },
  lines = {{"短期"}, {"长期"}, {"金叉"}, {"死叉"}},
}

function run()
  local short, long = MA(CLOSE, N1), MA(CLOSE, N2)
  return short, long, DRAWICON(CROSS(short, long), LOW), DRAWTEXT(CROSS(long, short), HIGH, "死叉")
end
