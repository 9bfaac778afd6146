-- 价格的指数平均线。
formula {
  name = "EXPMA", type = 1,
  text = "指数平均线",
  source = "Steven B. Achelis, Technical Analysis from A to Z, 1995",
  parameters = {
    {"N1", 12, min = 1, max = 1000, text = "短期"},
    {"N2", 50, min = 1, max = 1000, text = "长期"},
  },
  lines = {{"EXP1"}, {"EXP2"}},
}

function run()
  return EMA(CLOSE, N1), EMA(CLOSE, N2)
end
