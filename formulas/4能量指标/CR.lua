-- 高出与低于前一分钟中间价的幅度之比。
formula {
  name = "CR", type = 0,
  text = "中间意愿指标",
  source = "Nippon Technical Analysts Association, Analysis of Stock Prices in Japan, 1989",
  parameters = {
    {"N", 26, min = 2, max = 240, text = "分钟数"},
    {"M1", 10, min = 1, max = 100, text = "短期平均"},
    {"M2", 20, min = 1, max = 100, text = "长期平均"},
  },
  lines = {{"CR", precision = 2}, {"MA1", precision = 2}, {"MA2", precision = 2}},
}

function run()
  local middle = REF(HIGH + LOW, 1) / 2
  local cr = SUM(MAX(0, HIGH - middle), N) / SUM(MAX(0, middle - LOW), N) * 100
  local function shifted(n)
    return REF(MA(cr, n), math.floor(n / 2.5 + 1))
  end
  return cr, shifted(M1), shifted(M2)
end
