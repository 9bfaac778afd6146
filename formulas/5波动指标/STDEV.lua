-- 价格的样本标准差。
formula {
  name = "STDEV", type = 0,
  text = "标准差",
  source = "Steven B. Achelis, Technical Analysis from A to Z, 1995",
  parameters = {{"N", 20, min = 2, max = 240, text = "分钟数"}},
  lines = {{"STDEV", precision = 4}},
}

function run()
  return STD(CLOSE, N)
end
