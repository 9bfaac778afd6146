-- 价格的简单平均线。
formula {
  name = "MA", type = 1,
  text = "移动平均线",
  source = "Robert D. Edwards, John Magee, Technical Analysis of Stock Trends, 1948",
  parameters = {
    {"N1", 5, min = 1, max = 1000, text = "第一条"},
    {"N2", 10, min = 1, max = 1000, text = "第二条"},
    {"N3", 30, min = 1, max = 1000, text = "第三条"},
    {"N4", 60, min = 1, max = 1000, text = "第四条"},
  },
  lines = {{"MA1"}, {"MA2"}, {"MA3"}, {"MA4"}},
}

function run()
  return MA(CLOSE, N1), MA(CLOSE, N2), MA(CLOSE, N3), MA(CLOSE, N4)
end
