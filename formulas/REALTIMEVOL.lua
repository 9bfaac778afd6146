-- 分时量：第二个值是价格的变化，决定柱子的颜色；第一分钟与自己的开盘价相比。
formula {
  name = "REALTIMEVOL", type = 2,
  text = "分时成交量",
  source = "Robert D. Edwards, John Magee, Technical Analysis of Stock Trends, 1948",
  lines = {{"成交量", style = "COLORSTICK", precision = 0}},
}

function run()
  return NUMBER(VOL, DEFAULT(CLOSE - DEFAULT(REF(CLOSE, 1), OPEN), 0))
end
