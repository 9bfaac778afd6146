-- 平均线和离它固定百分比的上下轨。
formula {
  name = "ENV", type = 1,
  text = "轨道线",
  source = "Steven B. Achelis, Technical Analysis from A to Z, 1995",
  parameters = {
    {"N", 14, min = 1, max = 1000, text = "分钟数"},
    {"P", 0.5, min = 0.01, max = 20, text = "百分比"},
  },
  lines = {{"上轨"}, {"下轨"}},
}

function run()
  local middle = MA(CLOSE, N)
  return middle * (1 + P / 100), middle * (1 - P / 100)
end
