-- 价格与 N 分钟前相比的变化率。
formula {
  name = "ROC", type = 0,
  text = "变动率指标",
  source = "Martin J. Pring, Technical Analysis Explained, 1980",
  parameters = {
    {"N", 12, min = 1, max = 240, text = "间隔的分钟数"},
    {"M", 6, min = 1, max = 240, text = "平滑的分钟数"},
  },
  lines = {{"ROC", precision = 3}, {"MAROC", precision = 3}},
}

function run()
  local before = REF(CLOSE, N)
  local roc = (CLOSE - before) / before * 100
  return roc, MA(roc, M)
end
