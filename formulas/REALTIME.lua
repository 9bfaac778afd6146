-- 分时：每分钟的价格，和当日到该分钟为止的均价。
formula {
  name = "REALTIME", type = 2,
  text = "分时走势",
  source = "Robert D. Edwards, John Magee, Technical Analysis of Stock Trends, 1948",
  lines = {{"价格"}, {"均价"}},
}

function run()
  return CLOSE, AVERAGE
end
