-- 平均线和离它 K 倍标准差的上下轨。
formula {
  name = "BOLL", type = 1,
  text = "布林带",
  source = "John Bollinger, Bollinger on Bollinger Bands, 2001",
  parameters = {
    {"N", 20, min = 2, max = 1000, text = "分钟数"},
    {"K", 2, min = 0.1, max = 10, text = "标准差的倍数"},
  },
  lines = {{"中轨"}, {"上轨"}, {"下轨"}},
}

function run()
  local middle, width = MA(CLOSE, N), K * STDP(CLOSE, N)
  return middle, middle + width, middle - width
end
