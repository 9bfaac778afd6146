-- 真实波幅及其平滑平均。
formula {
  name = "ATR", type = 0,
  text = "真实波幅",
  source = "J. Welles Wilder, New Concepts in Technical Trading Systems, 1978",
  parameters = {{"N", 14, min = 1, max = 240, text = "分钟数"}},
  lines = {{"TR", precision = 3}, {"ATR", precision = 3}},
}

function run()
  local before = DEFAULT(REF(CLOSE, 1), CLOSE)
  local range = MAX(HIGH - LOW, ABS(HIGH - before), ABS(LOW - before))
  return range, SMA(range, N, 1)
end
