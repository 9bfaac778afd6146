-- 最近 N 分钟的最高价和最低价。
formula {
  name = "DC", type = 1,
  text = "唐奇安通道",
  source = "Perry J. Kaufman, New Trading Systems and Methods, 2005 (Richard Donchian)",
  parameters = {{"N", 20, min = 1, max = 1000, text = "分钟数"}},
  lines = {{"上轨"}, {"下轨"}, {"中线", style = "DOTLINE"}},
}

function run()
  local upper, lower = HHV(HIGH, N), LLV(LOW, N)
  return upper, lower, (upper + lower) / 2
end
