-- 累积派发线：成交量按收盘价在该分钟高低之间的位置累计；没有高低之差的分钟不计。
formula {
  name = "AD", type = 0,
  text = "累积派发线",
  source = "Steven B. Achelis, Technical Analysis from A to Z, 1995 (Marc Chaikin)",
  lines = {{"AD", precision = 0}},
}

function run()
  local place = ((CLOSE - LOW) - (HIGH - CLOSE)) / (HIGH - LOW)
  return SUM(DEFAULT(place, 0) * VOL, 0)
end
