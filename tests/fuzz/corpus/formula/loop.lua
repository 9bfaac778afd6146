formula { name = "L", lines = {{"A"}} }
function run()
  local total, out = 0, {}
  for i = 1, #CLOSE do total = total + CLOSE[i] * VOL[i] out[i] = total end
  return AVEDEV(VECTOR(out), 3)
end
