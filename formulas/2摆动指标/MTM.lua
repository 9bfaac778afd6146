-- 价格与 N 分钟前之差。
formula {
  name = "MTM", type = 0,
  text = "动量线",
  source = "Martin J. Pring, Technical Analysis Explained, 1980",
  parameters = {
    {"N", 12, min = 1, max = 240, text = "间隔的分钟数"},
    {"M", 6, min = 1, max = 240, text = "平滑的分钟数"},
  },
  lines = {{"MTM", precision = 3}, {"MAMTM", precision = 3}},
}

function run()
  local mtm = CLOSE - REF(CLOSE, N)
  return mtm, MA(mtm, M)
end
