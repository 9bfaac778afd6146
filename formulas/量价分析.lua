-- 组合的市值走势，和当日到该分钟为止的均值。
formula {
  name = "量价分析", type = 2,
  text = "组合量价分析",
  source = "Robert D. Edwards, John Magee, Technical Analysis of Stock Trends, 1948",
  lines = {{"价格"}, {"均价"}},
}

function run()
  return CLOSE, AVERAGE
end
