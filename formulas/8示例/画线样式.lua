-- 每一种画线样式各一条线，从下到上排开。
formula {
  name = "画线样式", type = 0,
  text = "全部画线样式",
  source = "画线样式的示例，没有定义可依",
  parameters = {
    {"STEP", 15, min = 1, max = 240, text = "标记的间隔，分钟"},
    {"LABEL", "标记", text = "写出的文字"},
  },
  lines = {
    {"实线", style = "LINE"},
    {"无渐变线", style = "PLAINLINE"},
    {"点虚线", style = "DOTLINE"},
    {"点虚线二", style = 6},
    {"点虚线三", style = 8},
    {"点划线", style = "DASHDOTLINE"},
    {"圆点", style = "CIRCLEDOT"},
    {"涨跌线", style = "BOOLLINE"},
    {"折线", style = "SEGMENT"},
    {"彩色柱", style = "COLORSTICK"},
    {"量柱", style = "VOLSTICK"},
    {"宽量柱", style = "WIDESTICK"},
    {"堆叠柱一", style = "STACKSTICK"},
    {"堆叠柱二", style = "STACKSTICK"},
    {"蜡烛", style = "KLINE"},
    {"蜡烛开盘", style = "NODRAW"},
    {"蜡烛最高", style = "NODRAW"},
    {"蜡烛最低", style = "NODRAW"},
    {"柱段", style = "STICKLINE"},
    {"文字", style = "TEXT"},
    {"定位文字", style = "TEXTFIX"},
    {"数字", style = "NUMBER"},
    {"图标", style = "ICON"},
    {"竖线", style = "VERTLINE"},
    {"竖线二", style = 19},
    {"竖虚线", style = "VERTDOT"},
    {"竖虚线二", style = 16},
    {"竖点划线", style = "VERTDASHDOT"},
    {"竖双点划线", style = "VERTDASHDOTDOT"},
  },
}

function run()
  local wave = (CLOSE / VALUEWHEN(EQ(BARPOS, 1), CLOSE) - 1) * 100
  local function at(height)
    return wave + height
  end
  local function every(place)
    return EQ(MOD(BARPOS, STEP), MIN(place, STEP - 1))
  end
  local before = DEFAULT(REF(wave, 1), wave)
  local sparse = PARTLINE(every(0), at(18))
  return at(2), at(4), at(6), at(8), at(10), at(12), at(14),
    wave, sparse, wave, VOL / HHV(VOL, 0), VOL / HHV(VOL, 0) / 2,
    ABS(wave) / 2, ABS(wave) / 4,
    at(22), before + 22, MAX(wave, before) + 22.2, MIN(wave, before) + 21.8,
    STICKLINE(every(3), at(27), at(25)), DRAWTEXT(every(0), at(28), LABEL),
    DRAWTEXTFIX(EQ(BARPOS, 1), 0.05, LABEL), DRAWNUMBER(every(0), at(30), CLOSE),
    DRAWICON(every(0), at(32)),
    EQ(BARPOS, 30), EQ(BARPOS, 60), EQ(BARPOS, 90), EQ(BARPOS, 120), EQ(BARPOS, 150), EQ(BARPOS, 180)
end
