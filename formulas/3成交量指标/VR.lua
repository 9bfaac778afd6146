-- 上涨与下跌分钟的成交量之比，平盘的各算一半。
formula {
  name = "VR", type = 0,
  text = "成交量变异率",
  source = "Nippon Technical Analysts Association, Analysis of Stock Prices in Japan, 1989",
  parameters = {
    {"N", 26, min = 2, max = 240, text = "分钟数"},
    {"M", 6, min = 1, max = 240, text = "平滑的分钟数"},
  },
  lines = {{"VR", precision = 2}, {"MAVR", precision = 2}},
}

function run()
  local change = CLOSE - REF(CLOSE, 1)
  local rise = SUM(IF(GT(change, 0), VOL, 0), N)
  local fall = SUM(IF(LT(change, 0), VOL, 0), N)
  local flat = SUM(IF(EQ(change, 0), VOL, 0), N)
  local vr = (2 * rise + flat) / (2 * fall + flat) * 100
  return vr, MA(vr, M)
end
