formula {
  name = "MACD", type = 0, text = "异同", source = "Appel",
  parameters = { {"SHORT", 12, min = 2, max = 200, text = "短期"}, {"KIND", "x"} },
  lines = { {"DIF", color = RGB(1, 2, 3)}, {"DEA", axis = "OWN"}, {"MACD", style = "COLORSTICK", precision = 2} },
}
function run()
  local dif = EMA(CLOSE, SHORT) - EMA(CLOSE, 26)
  local dea = EMA(dif, 9)
  return dif, dea, 2 * (dif - dea)
end
