-- 组合偏离当日均值的百分比，和它自身的 K 倍标准差带。
formula {
  name = "偏离度分析", type = 2,
  text = "组合偏离度分析",
  source = "中国证券业协会《证券投资分析》, 2012（乖离率）",
  parameters = {
    {"N", 30, min = 2, max = 1000, text = "标准差的分钟数"},
    {"K", 2, min = 0.1, max = 10, text = "标准差的倍数"},
  },
  lines = {{"偏离度", precision = 2}, {"上限", style = "DOTLINE", precision = 2}, {"下限", style = "DOTLINE", precision = 2}},
}

function run()
  local deviation = (CLOSE / AVERAGE - 1) * 100
  local middle, width = MA(deviation, N), K * STDP(deviation, N)
  return deviation, middle + width, middle - width
end
