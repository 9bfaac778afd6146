-- 最近 N 分钟里上涨的分钟所占的百分比。
formula {
  name = "PSY", type = 0,
  text = "心理线",
  source = "中国证券业协会《证券投资分析》, 2012",
  parameters = {
    {"N", 12, min = 2, max = 240, text = "分钟数"},
    {"M", 6, min = 1, max = 240, text = "平滑的分钟数"},
  },
  lines = {{"PSY", precision = 2}, {"PSYMA", precision = 2}},
}

function run()
  local psy = COUNT(GT(CLOSE, REF(CLOSE, 1)), N) / N * 100
  return psy, MA(psy, M)
end
