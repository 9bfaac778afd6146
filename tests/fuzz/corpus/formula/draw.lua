formula { name = "D", type = 1, lines = {{"A"}, {"B"}, {"C"}, {"E"}} }
function run()
  local up = GT(CLOSE, REF(CLOSE, 1)) & VALID(OPEN)
  return DRAWTEXT(up, HIGH, "up"), DRAWICON(~up, LOW), STICKLINE(up, CLOSE, OPEN),
    STYLE(COLOR(NUMBER(CLOSE, VOL), IF(up, COLORRISE, COLORFALL)), "DOTLINE")
end
