-- 两条指数平均线之差、它的平均线，和两者距离的两倍。
formula {
  name = "MACD", type = 0,
  text = "指数平滑异同移动平均线",
  source = "Gerald Appel, The Moving Average Convergence-Divergence Method, 1979",
  parameters = {
    {"SHORT", 12, min = 2, max = 200, text = "短期"},
    {"LONG", 26, min = 2, max = 200, text = "长期"},
    {"MID", 9, min = 2, max = 200, text = "平滑"},
  },
  lines = {{"DIF", precision = 3}, {"DEA", precision = 3}, {"MACD", style = "COLORSTICK", precision = 3}},
}

function run()
  local dif = EMA(CLOSE, SHORT) - EMA(CLOSE, LONG)
  local dea = EMA(dif, MID)
  return dif, dea, 2 * (dif - dea)
end
