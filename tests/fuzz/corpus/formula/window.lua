formula { name = "W", lines = {{"A"}, {"B"}, {"C"}, {"D"}} }
function run()
  return HHV(HIGH, 0) - LLVBARS(LOW, 3), COUNT(CROSS(CLOSE, MA(CLOSE, 2)), 4) / STD(CLOSE, 3),
    SMA(WMA(CLOSE, 2), 3, 1) + BARSLAST(LT(CLOSE, OPEN)), FILTER(LONGCROSS(CLOSE, AVERAGE, 2), 2) ^ SLOPE(VOL, 2)
end
