-- 三次指数平均的变化率。
formula {
  name = "TRIX", type = 0,
  text = "三重指数平均线",
  source = "Jack Hutson, Good TRIX, Technical Analysis of Stocks & Commodities, 1983",
  parameters = {
    {"N", 12, min = 2, max = 200, text = "平均的分钟数"},
    {"M", 9, min = 1, max = 200, text = "平滑的分钟数"},
  },
  lines = {{"TRIX", precision = 4}, {"MATRIX", precision = 4}},
}

function run()
  local triple = EMA(EMA(EMA(CLOSE, N), N), N)
  local before = REF(triple, 1)
  local trix = (triple - before) / before * 100
  return trix, MA(trix, M)
end
