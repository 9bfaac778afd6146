-- 每分钟一根蜡烛；行情没有开盘价时以前一分钟的收盘价代替。
formula {
  name = "分时K线", type = 2,
  text = "一分钟蜡烛图",
  source = "Steve Nison, Japanese Candlestick Charting Techniques, 1991",
  lines = {
    {"收盘", style = "KLINE"},
    {"开盘", style = "NODRAW"},
    {"最高", style = "NODRAW"},
    {"最低", style = "NODRAW"},
    {"均价"},
  },
}

function run()
  local open = DEFAULT(OPEN, DEFAULT(REF(CLOSE, 1), CLOSE))
  return CLOSE, open, HIGH, LOW, AVERAGE
end
