-- 上升与下降的动向各占真实波幅的百分比，和两者之差的平均。
formula {
  name = "DMI", type = 0,
  text = "动向指标",
  source = "J. Welles Wilder, New Concepts in Technical Trading Systems, 1978",
  parameters = {
    {"N", 14, min = 2, max = 200, text = "动向的分钟数"},
    {"M", 6, min = 1, max = 200, text = "平均动向的分钟数"},
  },
  lines = {{"PDI", precision = 2}, {"MDI", precision = 2}, {"ADX", precision = 2}, {"ADXR", precision = 2}},
}

function run()
  local before = DEFAULT(REF(CLOSE, 1), CLOSE)
  local range = MAX(HIGH - LOW, ABS(HIGH - before), ABS(LOW - before))
  local up = HIGH - DEFAULT(REF(HIGH, 1), HIGH)
  local down = DEFAULT(REF(LOW, 1), LOW) - LOW
  local plus = IF(AND(GT(up, 0), GT(up, down)), up, 0)
  local minus = IF(AND(GT(down, 0), GT(down, up)), down, 0)
  local average = SMA(range, N, 1)
  local pdi = SMA(plus, N, 1) / average * 100
  local mdi = SMA(minus, N, 1) / average * 100
  local adx = SMA(ABS(pdi - mdi) / (pdi + mdi) * 100, M, 1)
  return pdi, mdi, adx, (adx + REF(adx, M)) / 2
end
