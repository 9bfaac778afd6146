-- 一笔大单的下单进度：按时间均分，和按市场成交量的比例参与。
formula {
  name = "预计下单", type = 2,
  text = "预计下单分析",
  source = "Barry Johnson, Algorithmic Trading and DMA, 2010 (time weighted, percent of volume)",
  parameters = {
    {"QTY", 100000, min = 1, text = "计划数量"},
    {"MINUTES", 240, min = 1, max = 2000, text = "下单的分钟数"},
    {"RATE", 10, min = 0.01, max = 100, text = "参与成交量的百分比"},
  },
  lines = {{"均分进度", precision = 0}, {"比例进度", precision = 0}},
}

function run()
  return QTY * MIN(BARPOS / MINUTES, 1), MIN(SUM(VOL, 0) * RATE / 100, QTY)
end
