<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="zh_CN">
<context>
    <name>ColumnChoice</name>
    <message>
        <source>日期时间</source>
        <translation>Date and time</translation>
    </message>
    <message>
        <source>日期</source>
        <translation>Date</translation>
    </message>
    <message>
        <source>时间</source>
        <translation>Time</translation>
    </message>
    <message>
        <source>交易日</source>
        <translation>Trading day</translation>
    </message>
    <message>
        <source>代码</source>
        <translation>Code</translation>
    </message>
    <message>
        <source>交易所</source>
        <translation>Exchange</translation>
    </message>
    <message>
        <source>开盘价</source>
        <translation>Open</translation>
    </message>
    <message>
        <source>最高价</source>
        <translation>High</translation>
    </message>
    <message>
        <source>最低价</source>
        <translation>Low</translation>
    </message>
    <message>
        <source>收盘价</source>
        <translation>Close</translation>
    </message>
    <message>
        <source>成交量</source>
        <translation>Volume</translation>
    </message>
    <message>
        <source>成交额</source>
        <translation>Amount</translation>
    </message>
    <message>
        <source>均价</source>
        <translation>Average price</translation>
    </message>
    <message>
        <source>昨收价</source>
        <translation>Previous close</translation>
    </message>
    <message>
        <source>逐笔成交价</source>
        <translation>Deal price</translation>
    </message>
    <message>
        <source>快照最新价</source>
        <translation>Last price of snapshot</translation>
    </message>
    <message>
        <source>当日总成交量</source>
        <translation>Total volume of the day</translation>
    </message>
    <message>
        <source>当日总成交额</source>
        <translation>Total amount of the day</translation>
    </message>
</context>
<context>
    <name>CommandLine</name>
    <message>
        <source>显示的证券，如 SH600000</source>
        <translation>instrument to show, such as SH600000</translation>
    </message>
    <message>
        <source>显示的交易日，如 2026-11-19；缺省为当日</source>
        <translation>trading day to show, such as 2026-11-19; default: the running day</translation>
    </message>
    <message>
        <source>把走势图写成 PNG 图片后退出，不需要显示器</source>
        <translation>write the chart to a PNG picture and exit; needs no display</translation>
    </message>
    <message>
        <source>窗口或图片的大小，缺省 1200x700</source>
        <translation>size of the window or the picture, default 1200x700</translation>
    </message>
    <message>
        <source>每像素的设备像素数，1 至 4，缺省 1</source>
        <translation>device pixels per pixel, 1 to 4, default 1</translation>
    </message>
    <message>
        <source>一个窗口中同时显示 N 个证券当日的走势，1 至 36</source>
        <translation>show the running day of N instruments in one window, 1 to 36</translation>
    </message>
    <message>
        <source>配色，缺省为上次所选</source>
        <translation>colours; default: those chosen last</translation>
    </message>
    <message>
        <source>语言，缺省为上次所给，或按系统的语言</source>
        <translation>language; default: the one given last, or that of the system</translation>
    </message>
    <message>
        <source>导入分钟线、逐笔成交或快照文件；可以多次给出</source>
        <translation>import a file of minute bars, deals or snapshots; may be given several times</translation>
    </message>
    <message>
        <source>导入文件的市场，如 SH</source>
        <translation>market of the imported file, such as SH</translation>
    </message>
    <message>
        <source>导入文件的证券代码，如 600519</source>
        <translation>code of the imported file, such as 600519</translation>
    </message>
    <message>
        <source>导入文件的成交量单位</source>
        <translation>unit of volume in the imported file</translation>
    </message>
    <message>
        <source>导入文件的时间是一分钟的开始还是结束</source>
        <translation>times in the imported file are a minute&apos;s start or end</translation>
    </message>
    <message>
        <source>导入的交易日按市场的交易时段，还是按文件中出现的时间</source>
        <translation>imported days have the market&apos;s sessions, or the times found in the file</translation>
    </message>
    <message>
        <source>导入文件的列，如 datetime=时刻,open=2,high=3,low=4,close=5,volume=6</source>
        <translation>columns of the imported file, such as datetime=stamp,open=2,high=3,low=4,close=5,volume=6</translation>
    </message>
    <message>
        <source>模拟交易所的速度，每秒走过的市场秒数</source>
        <translation>speed of the simulated exchange, market seconds a second</translation>
    </message>
    <message>
        <source>行情库文件；缺省在用户的数据目录中</source>
        <translation>market store; default: in the user&apos;s data folder</translation>
    </message>
    <message>
        <source>实时行情服务器，如 nats://market:4222；缺省为内置的模拟交易所</source>
        <translation>server of live quotes, such as nats://market:4222; default: the built-in simulated exchange</translation>
    </message>
    <message>
        <source>历史行情服务器，如 postgres://reader@market:5432/history</source>
        <translation>server of past days, such as postgres://reader@market:5432/history</translation>
    </message>
    <message>
        <source>显示本说明</source>
        <translation>show this help</translation>
    </message>
    <message>
        <source>用法: timeshare-terminal [选项]</source>
        <translation>Usage: timeshare-terminal [options]</translation>
    </message>
</context>
<context>
    <name>ConfigService</name>
    <message>
        <source>配置文件 %1 无法写入（%2）</source>
        <translation>Configuration file %1 cannot be written (%2)</translation>
    </message>
    <message>
        <source>配置文件 %1 无法读取（%2），使用缺省配置</source>
        <translation>Configuration file %1 cannot be read (%2); defaults are used</translation>
    </message>
    <message>
        <source>内容不是对象</source>
        <translation>the content is not an object</translation>
    </message>
    <message>
        <source>配置文件 %1 已损坏（%2），已另存为 %3，使用缺省配置</source>
        <translation>Configuration file %1 is damaged (%2); it was kept as %3, defaults are used</translation>
    </message>
    <message>
        <source>配置文件 %1 已损坏（%2），使用缺省配置</source>
        <translation>Configuration file %1 is damaged (%2); defaults are used</translation>
    </message>
</context>
<context>
    <name>FeedReport</name>
    <message>
        <source>行情服务器不接受登录凭据（自 %1），行情停在此时</source>
        <translation>The quote server refuses the credentials (since %1); quotes stand at that time</translation>
    </message>
    <message>
        <source>行情服务器连接不上（自 %1），正在重试，行情停在此时</source>
        <translation>The quote server cannot be reached (since %1), retrying; quotes stand at that time</translation>
    </message>
    <message>
        <source>行情源没有消息（自 %1），行情停在此时</source>
        <translation>The quote source is silent (since %1); quotes stand at that time</translation>
    </message>
    <message numerus="yes">
        <source>%n 个证券的分时数据不全（自 %1），正在补齐</source>
        <translation>
            <numerusform>Intraday data of %n instrument are incomplete (since %1), being filled in</numerusform>
            <numerusform>Intraday data of %n instruments are incomplete (since %1), being filled in</numerusform>
        </translation>
    </message>
    <message>
        <source>行情源的数据版本高于本程序（自 %1），这些数据没有显示，请升级本程序</source>
        <translation>The quote source sends data newer than this program (since %1), which are not shown: update the program</translation>
    </message>
</context>
<context>
    <name>FormulaCatalogue</name>
    <message>
        <source>文件 %1 与另一个文件的指标同名，未使用</source>
        <translation>File %1 has an indicator of the same name as another file and is not used</translation>
    </message>
    <message>
        <source>模型与指标同名，未使用</source>
        <translation>The model has the name of an indicator and is not used</translation>
    </message>
    <message>
        <source>参数不能用：%1</source>
        <translation>Parameters cannot be used: %1</translation>
    </message>
    <message>
        <source>没有指标 %1</source>
        <translation>There is no indicator %1</translation>
    </message>
    <message>
        <source>我的指标</source>
        <translation>MyIndicator</translation>
    </message>
    <message>
        <source>分钟数</source>
        <translation>minutes</translation>
    </message>
    <message>
        <source>没有存放自编指标的文件夹</source>
        <translation>There is no folder for your own indicators</translation>
    </message>
    <message>
        <source>已有指标 %1，请换一个名称</source>
        <translation>There is an indicator %1 already: choose another name</translation>
    </message>
    <message>
        <source>名称“%1”不能用作文件名</source>
        <translation>The name &quot;%1&quot; cannot be that of a file</translation>
    </message>
    <message>
        <source>指标 %1 没有可恢复的内置内容</source>
        <translation>There is no built-in %1 to restore</translation>
    </message>
    <message>
        <source>文件 %1 无法删除（%2）</source>
        <translation>File %1 cannot be removed (%2)</translation>
    </message>
    <message>
        <source>文件 %1 无法读取（%2）</source>
        <translation>File %1 cannot be read (%2)</translation>
    </message>
    <message>
        <source>文件太大</source>
        <translation>the file is too large</translation>
    </message>
    <message>
        <source>文件 %1 无法写入（%2）</source>
        <translation>File %1 cannot be written (%2)</translation>
    </message>
    <message>
        <source>参数 %1 的类型不符</source>
        <translation>Parameter %1 is of the wrong type</translation>
    </message>
    <message>
        <source>参数 %1 的值超出范围</source>
        <translation>The value of parameter %1 is out of range</translation>
    </message>
    <message>
        <source>自编指标</source>
        <translation>My indicators</translation>
    </message>
    <message>
        <source>PYTHON模型指标</source>
        <translation>Python models</translation>
    </message>
</context>
<context>
    <name>FormulaExport</name>
    <message>
        <source>文件夹</source>
        <translation>Folder</translation>
    </message>
    <message>
        <source>文件名</source>
        <translation>File name</translation>
    </message>
    <message>
        <source>类型</source>
        <translation>Type</translation>
    </message>
    <message>
        <source>保存</source>
        <translation>Save</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>主图只有系统公式，没有可导出的公式</source>
        <translation>The main chart has system formulas only, none can be exported</translation>
    </message>
    <message>
        <source>导出公式</source>
        <translation>Export formula</translation>
    </message>
    <message>
        <source>公式 (*%1)</source>
        <translation>Formulas (*%1)</translation>
    </message>
    <message>
        <source>%1 没有可导出的内容</source>
        <translation>%1 has nothing to export</translation>
    </message>
    <message>
        <source>%1 已导出到 %2</source>
        <translation>%1 exported to %2</translation>
    </message>
    <message>
        <source>文件 %1 无法写入（%2）</source>
        <translation>File %1 cannot be written (%2)</translation>
    </message>
</context>
<context>
    <name>FormulaRequest</name>
    <message>
        <source>（计算慢）</source>
        <translation> (slow)</translation>
    </message>
    <message>
        <source>计算太慢，已降低刷新频率</source>
        <translation>Too slow to compute, refreshed less often</translation>
    </message>
</context>
<context>
    <name>FormulaRun</name>
    <message>
        <source>没有函数 run</source>
        <translation>there is no function run</translation>
    </message>
    <message>
        <source>run 返回 %1 个值，而 lines 有 %2 条线</source>
        <translation>run returns %1 values, and lines has %2 lines</translation>
    </message>
    <message>
        <source>没有 formula { ... }</source>
        <translation>there is no formula { ... }</translation>
    </message>
    <message>
        <source>文件过长（上限 %1 KiB）</source>
        <translation>the file is too long (limit %1 KiB)</translation>
    </message>
</context>
<context>
    <name>HistoryDownloads</name>
    <message>
        <source>下载已停止</source>
        <translation>Download stopped</translation>
    </message>
</context>
<context>
    <name>HistoryReport</name>
    <message>
        <source>历史服务器连接不上</source>
        <translation>The history server cannot be reached</translation>
    </message>
    <message>
        <source>历史服务器没有应答</source>
        <translation>The history server does not answer</translation>
    </message>
    <message>
        <source>历史服务器不接受登录凭据</source>
        <translation>The history server refuses the credentials</translation>
    </message>
    <message>
        <source>历史服务器上还没有历史行情</source>
        <translation>The history server has no past days yet</translation>
    </message>
    <message>
        <source>历史服务器的数据版本高于本程序，请升级本程序</source>
        <translation>The data of the history server are newer than this program: update the program</translation>
    </message>
    <message>
        <source>历史服务器出错</source>
        <translation>The history server failed</translation>
    </message>
    <message>
        <source>历史行情写不进本机的行情库，请检查磁盘</source>
        <translation>Past days cannot be written to the local store: check the disk</translation>
    </message>
    <message numerus="yes">
        <source>%1（自 %2），%n 个证券的历史分时不全，正在重试</source>
        <translation>
            <numerusform>%1 (since %2), past days of %n instrument are incomplete, retrying</numerusform>
            <numerusform>%1 (since %2), past days of %n instruments are incomplete, retrying</numerusform>
        </translation>
    </message>
    <message>
        <source>%1（自 %2），正在重试</source>
        <translation>%1 (since %2), retrying</translation>
    </message>
    <message numerus="yes">
        <source>历史服务器上 %n 个交易日的数据不合理，没有取用</source>
        <translation>
            <numerusform>The data of %n trading day on the history server are implausible and were not taken</numerusform>
            <numerusform>The data of %n trading days on the history server are implausible and were not taken</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>ImportJob</name>
    <message numerus="yes">
        <source>已导入 %1 %2 至 %3，%n 根分钟线</source>
        <translation>
            <numerusform>Imported %1 %2 to %3, %n minute bar</numerusform>
            <numerusform>Imported %1 %2 to %3, %n minute bars</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>，%n 笔成交</source>
        <translation>
            <numerusform>, %n deal</numerusform>
            <numerusform>, %n deals</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>略去 %n 行：</source>
        <translation>
            <numerusform>%n row left out:</numerusform>
            <numerusform>%n rows left out:</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>不能读的行，至少 %n 行：</source>
        <translation>
            <numerusform>At least %n row cannot be read:</numerusform>
            <numerusform>At least %n rows cannot be read:</numerusform>
        </translation>
    </message>
    <message>
        <source>第 %1 行：%2</source>
        <translation>Line %1: %2</translation>
    </message>
    <message numerus="yes">
        <source>另有 %n 个证券，%1 根分钟线</source>
        <translation>
            <numerusform>and %n more instrument, %1 minute bars</numerusform>
            <numerusform>and %n more instruments, %1 minute bars</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>ImportPreview</name>
    <message>
        <source>时间</source>
        <translation>Time</translation>
    </message>
    <message>
        <source>开盘</source>
        <translation>Open</translation>
    </message>
    <message>
        <source>最高</source>
        <translation>High</translation>
    </message>
    <message>
        <source>最低</source>
        <translation>Low</translation>
    </message>
    <message>
        <source>收盘</source>
        <translation>Close</translation>
    </message>
    <message>
        <source>成交量</source>
        <translation>Volume</translation>
    </message>
    <message>
        <source>成交额</source>
        <translation>Amount</translation>
    </message>
    <message>
        <source>成交价</source>
        <translation>Deal price</translation>
    </message>
    <message>
        <source>最新价</source>
        <translation>Last</translation>
    </message>
    <message>
        <source>总成交量</source>
        <translation>Total volume</translation>
    </message>
    <message>
        <source>总成交额</source>
        <translation>Total amount</translation>
    </message>
    <message>
        <source>分钟线</source>
        <translation>Minute bars</translation>
    </message>
    <message>
        <source>逐笔成交</source>
        <translation>Deals</translation>
    </message>
    <message>
        <source>快照</source>
        <translation>Snapshots</translation>
    </message>
</context>
<context>
    <name>LogFile</name>
    <message>
        <source>不是普通文件</source>
        <translation>not an ordinary file</translation>
    </message>
    <message>
        <source>日志文件 %1 无法写入（%2），本次运行不记日志</source>
        <translation>Log file %1 cannot be written (%2); this run has no log</translation>
    </message>
</context>
<context>
    <name>LuaDescription</name>
    <message>
        <source>formula 的 %1 应为%2</source>
        <translation>%1 of formula should be %2</translation>
    </message>
    <message>
        <source>文字</source>
        <translation>a text</translation>
    </message>
    <message>
        <source>数</source>
        <translation>a number</translation>
    </message>
    <message>
        <source>%1 到 %2 的整数</source>
        <translation>a whole number from %1 to %2</translation>
    </message>
    <message>
        <source>列表</source>
        <translation>a list</translation>
    </message>
    <message>
        <source>不超过 %1 项的列表</source>
        <translation>a list of no more than %1 entries</translation>
    </message>
    <message>
        <source>表的列表</source>
        <translation>a list of tables</translation>
    </message>
    <message>
        <source>参数 %1 应为 %2 到 %3 的数</source>
        <translation>parameter %1 should be a number from %2 to %3</translation>
    </message>
    <message>
        <source>参数不能名为 %1</source>
        <translation>a parameter cannot be named %1</translation>
    </message>
    <message>
        <source>不超过 %1 字节的文字</source>
        <translation>a text of no more than %1 bytes</translation>
    </message>
    <message>
        <source>有名称的线</source>
        <translation>a line with a name</translation>
    </message>
    <message>
        <source>formula { ... } 应调用一次，参数为一个表</source>
        <translation>formula { ... } should be called once, with one table</translation>
    </message>
    <message>
        <source>公式的名称</source>
        <translation>the name of the formula</translation>
    </message>
    <message>
        <source>至少一条线的列表</source>
        <translation>a list of at least one line</translation>
    </message>
</context>
<context>
    <name>LuaDrawings</name>
    <message>
        <source>绘图指令过多</source>
        <translation>too many drawing commands</translation>
    </message>
    <message>
        <source>没有这种线型：%1</source>
        <translation>there is no such line style: %1</translation>
    </message>
    <message>
        <source>run 的第 %1 个返回值应为向量、绘图或数</source>
        <translation>result %1 of run should be a vector, a drawing or a number</translation>
    </message>
</context>
<context>
    <name>LuaSandbox</name>
    <message>
        <source>运行超时</source>
        <translation>out of time</translation>
    </message>
    <message>
        <source>内存超限</source>
        <translation>out of memory</translation>
    </message>
    <message>
        <source>内存超限（上限 %1 KiB）</source>
        <translation>out of memory (limit %1 KiB)</translation>
    </message>
    <message>
        <source>公式中止，未说明原因</source>
        <translation>the formula stopped without a reason</translation>
    </message>
</context>
<context>
    <name>LuaValues</name>
    <message>
        <source>%1 的第 %2 个参数应为%3</source>
        <translation>argument %2 of %1 should be %3</translation>
    </message>
    <message>
        <source>向量或数</source>
        <translation>a vector or a number</translation>
    </message>
    <message>
        <source>%1 到 %2 的整数</source>
        <translation>a whole number from %1 to %2</translation>
    </message>
    <message>
        <source>不超过 %1 字节的文字</source>
        <translation>a text of no more than %1 bytes</translation>
    </message>
    <message>
        <source>数的表：第 %1 个不是数</source>
        <translation>a table of numbers: entry %1 is none</translation>
    </message>
</context>
<context>
    <name>LuaVectors</name>
    <message>
        <source>%1 需要 %2 个参数，给出了 %3 个</source>
        <translation>%1 takes %2 arguments, %3 were given</translation>
    </message>
    <message>
        <source>向量不能用 &lt; &lt;= &gt; &gt;= == ~= 比较：请用 LT LE GT GE EQ NE</source>
        <translation>vectors cannot be compared with &lt; &lt;= &gt; &gt;= == ~=: use LT LE GT GE EQ NE</translation>
    </message>
    <message>
        <source>向量的下标应为整数</source>
        <translation>the index of a vector should be a whole number</translation>
    </message>
    <message>
        <source>数的表</source>
        <translation>a table of numbers</translation>
    </message>
    <message>
        <source>向量过多（上限 %1 个）</source>
        <translation>too many vectors (limit %1)</translation>
    </message>
</context>
<context>
    <name>QObject</name>
    <message>
        <source>正在导入 %1</source>
        <translation>Importing %1</translation>
    </message>
    <message>
        <source>日志</source>
        <translation>Log</translation>
    </message>
    <message>
        <source>内存</source>
        <translation>Memory</translation>
    </message>
    <message>
        <source>系统内存不足，请关闭其他程序，并尽快重新启动本程序</source>
        <translation>The system is short of memory: close other programs and restart this one soon</translation>
    </message>
    <message>
        <source>正在生成行情库</source>
        <translation>Making the market store</translation>
    </message>
    <message>
        <source>停止</source>
        <translation>Stop</translation>
    </message>
    <message>
        <source>分时行情</source>
        <translation>Intraday quotes</translation>
    </message>
    <message>
        <source>历史服务器</source>
        <translation>History server</translation>
    </message>
    <message>
        <source>上证指数</source>
        <translation>SSE Composite</translation>
    </message>
    <message>
        <source>深证成指</source>
        <translation>SZSE Component</translation>
    </message>
    <message>
        <source>%1（昨收未知，以首笔开盘价计）</source>
        <translation>%1 (previous close unknown, reckoned from the first open)</translation>
    </message>
    <message>
        <source>行情库</source>
        <translation>Market store</translation>
    </message>
    <message numerus="yes">
        <source>行情库中有 %n 行数据不合理，已略去</source>
        <translation>
            <numerusform>%n implausible row of the store was left out</numerusform>
            <numerusform>%n implausible rows of the store were left out</numerusform>
        </translation>
    </message>
    <message>
        <source>申万%1级 %2</source>
        <translation>Sector level %1 %2</translation>
    </message>
    <message>
        <source>没有实时行情（没有给出 --feed），显示的是历史行情</source>
        <translation>No live quotes (--feed was not given); past days are shown</translation>
    </message>
</context>
<context>
    <name>ScriptModel</name>
    <message>
        <source>不能运行 %1：%2。请检查 Python 解释器的设置</source>
        <translation>%1 cannot be run: %2. Check the setting of the Python interpreter</translation>
    </message>
    <message>
        <source>运行超过了 %1 秒，已停止</source>
        <translation>ran longer than %1 s and was stopped</translation>
    </message>
    <message>
        <source>输出超过了 %1 MB，已停止</source>
        <translation>wrote more than %1 MB and was stopped</translation>
    </message>
    <message>
        <source>同时运行的进程超过了 %1 个，已停止</source>
        <translation>ran more than %1 processes at once and was stopped</translation>
    </message>
    <message>
        <source>所有进程占用的内存超过了 %1 MB，已停止</source>
        <translation>took more than %1 MB of memory and was stopped</translation>
    </message>
    <message>
        <source>占用处理器的时间太长，已停止</source>
        <translation>took too much processor time and was stopped</translation>
    </message>
    <message>
        <source>被信号 %1 终止</source>
        <translation>ended by signal %1</translation>
    </message>
    <message>
        <source>以状态 %1 结束</source>
        <translation>ended with status %1</translation>
    </message>
    <message>
        <source>没有输出任何线</source>
        <translation>gave no line</translation>
    </message>
    <message>
        <source>没有模型文件 %1</source>
        <translation>there is no model file %1</translation>
    </message>
    <message>
        <source>没有找到 Python 解释器%1。请安装 python3 或改正设置</source>
        <translation>no Python interpreter was found%1. Install python3 or correct the setting</translation>
    </message>
    <message>
        <source>线的名称应为 1 到 200 个字符</source>
        <translation>the name of a line should have 1 to 200 characters</translation>
    </message>
    <message>
        <source>线“%1”的 style 应为 0 到 255 的整数</source>
        <translation>line &quot;%1&quot;: style should be a whole number from 0 to 255</translation>
    </message>
    <message>
        <source>线“%1”的 color 应为 #rrggbb</source>
        <translation>line &quot;%1&quot;: color should be #rrggbb</translation>
    </message>
    <message>
        <source>线“%1”的 axis 应为 shared、own 或 hidden</source>
        <translation>line &quot;%1&quot;: axis should be shared, own or hidden</translation>
    </message>
    <message>
        <source>线“%1”有 %2 个值，应为每分钟一个，共 %3 个</source>
        <translation>line &quot;%1&quot; has %2 values, and should have one a minute, %3 in all</translation>
    </message>
    <message>
        <source>线“%1”的第 %2 个值不是数，也不是 null</source>
        <translation>line &quot;%1&quot;: value %2 is neither a number nor null</translation>
    </message>
    <message>
        <source>进度应为 0 到 total 的整数</source>
        <translation>progress should be a whole number from 0 to total</translation>
    </message>
    <message>
        <source>输出不是结果：“%1”，应为含 line、progress 或 error 的 JSON</source>
        <translation>the output is no result: &quot;%1&quot;; it should be JSON with line, progress or error</translation>
    </message>
    <message>
        <source>一行输出超过了 %1 字节</source>
        <translation>a line of output has more than %1 bytes</translation>
    </message>
    <message>
        <source>超过了 %1 条线</source>
        <translation>more than %1 lines</translation>
    </message>
</context>
<context>
    <name>ServerHistory</name>
    <message>
        <source>%1 的历史行情没有取到：%2</source>
        <translation>Past days of %1 could not be had: %2</translation>
    </message>
    <message>
        <source>历史服务器没有 %1 的这一天</source>
        <translation>The history server does not have this day of %1</translation>
    </message>
</context>
<context>
    <name>SimulatedHistory</name>
    <message>
        <source>没有 %1 的历史行情可以下载</source>
        <translation>There are no past days of %1 to download</translation>
    </message>
</context>
<context>
    <name>StoreSelfStocks</name>
    <message>
        <source>列表要有名称</source>
        <translation>A list needs a name</translation>
    </message>
    <message>
        <source>列表“%1”没有改变：%2</source>
        <translation>List &quot;%1&quot; was not changed: %2</translation>
    </message>
</context>
<context>
    <name>ThreadStart</name>
    <message>
        <source>系统无法启动新的线程，请关闭其他程序后重试</source>
        <translation>The system cannot start another thread: close other programs and try again</translation>
    </message>
</context>
<context>
    <name>TradeImportNotes</name>
    <message>
        <source>文件已读完：导入 %1 条，略去 %2 行</source>
        <translation>File read: records imported: %1, rows left out: %2</translation>
    </message>
    <message>
        <source>第 %1 行：%2</source>
        <translation>Line %1: %2</translation>
    </message>
    <message>
        <source>没有账号、证券、价格、数量等字段</source>
        <translation>account, instrument, price or quantity is missing</translation>
    </message>
</context>
<context>
    <name>TradeTexts</name>
    <message>
        <source>未开始</source>
        <translation>Not started</translation>
    </message>
    <message>
        <source>执行中</source>
        <translation>Running</translation>
    </message>
    <message>
        <source>已撤销</source>
        <translation>Cancelled</translation>
    </message>
    <message>
        <source>已完成</source>
        <translation>Finished</translation>
    </message>
    <message>
        <source>已到期</source>
        <translation>Expired</translation>
    </message>
    <message>
        <source>状态 %1</source>
        <translation>Status %1</translation>
    </message>
    <message>
        <source>限价</source>
        <translation>limit price</translation>
    </message>
    <message>
        <source>价格类型 %1</source>
        <translation>price type %1</translation>
    </message>
    <message>
        <source>买入</source>
        <translation>Buy</translation>
    </message>
    <message>
        <source>卖出</source>
        <translation>Sell</translation>
    </message>
    <message>
        <source>按金额买入</source>
        <translation>Buy by amount</translation>
    </message>
    <message>
        <source>操作 %1</source>
        <translation>Operation %1</translation>
    </message>
    <message>
        <source>手</source>
        <translation>lots</translation>
    </message>
    <message>
        <source>股</source>
        <translation>shares</translation>
    </message>
    <message>
        <source>份</source>
        <translation>units</translation>
    </message>
    <message>
        <source>张</source>
        <translation>bonds</translation>
    </message>
</context>
<context>
    <name>terminal::ColumnDialog</name>
    <message>
        <source>%1 的列</source>
        <translation>Columns of %1</translation>
    </message>
    <message>
        <source>确定</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>略去</source>
        <translation>Leave out</translation>
    </message>
    <message>
        <source>%1：%2</source>
        <translation>%1: %2</translation>
    </message>
</context>
<context>
    <name>terminal::ControlFold</name>
    <message>
        <source>更多</source>
        <translation>More</translation>
    </message>
</context>
<context>
    <name>terminal::ControlRow</name>
    <message>
        <source>日期</source>
        <translation>Date</translation>
    </message>
    <message>
        <source>副图</source>
        <translation>Panes</translation>
    </message>
    <message>
        <source>无副图</source>
        <translation>No panes</translation>
    </message>
    <message numerus="yes">
        <source>%n 个副图</source>
        <translation>
            <numerusform>%n pane</numerusform>
            <numerusform>%n panes</numerusform>
        </translation>
    </message>
    <message>
        <source>交易</source>
        <translation>Trades</translation>
    </message>
    <message>
        <source>交易详情</source>
        <translation>Trade details</translation>
    </message>
    <message>
        <source>指标</source>
        <translation>Indicators</translation>
    </message>
    <message>
        <source>自选</source>
        <translation>Watchlist</translation>
    </message>
    <message>
        <source>暂停</source>
        <translation>Pause</translation>
    </message>
    <message>
        <source>速度</source>
        <translation>Speed</translation>
    </message>
    <message>
        <source>%1 倍速</source>
        <translation>Speed %1×</translation>
    </message>
    <message>
        <source>导入…</source>
        <translation>Import…</translation>
    </message>
    <message>
        <source>下载数据</source>
        <translation>Download</translation>
    </message>
    <message>
        <source>%1 当日</source>
        <translation>%1 today</translation>
    </message>
    <message>
        <source>继续</source>
        <translation>Resume</translation>
    </message>
    <message>
        <source>停止下载</source>
        <translation>Stop download</translation>
    </message>
    <message>
        <source>浅色</source>
        <translation>Light</translation>
    </message>
    <message>
        <source>深色</source>
        <translation>Dark</translation>
    </message>
</context>
<context>
    <name>terminal::DownloadTeller</name>
    <message>
        <source>%1 由成分计算，请下载其成分的数据</source>
        <translation>%1 is computed from its constituents: download their data</translation>
    </message>
    <message>
        <source>开始下载 %1</source>
        <translation>Downloading %1</translation>
    </message>
    <message>
        <source>下载 %1：%2/%3</source>
        <translation>Downloading %1: %2/%3</translation>
    </message>
    <message numerus="yes">
        <source>%1 的下载没有完成，已下载 %n 个交易日</source>
        <translation>
            <numerusform>The download of %1 is incomplete, %n trading day loaded</numerusform>
            <numerusform>The download of %1 is incomplete, %n trading days loaded</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%1 下载完成，新增 %n 个交易日</source>
        <translation>
            <numerusform>%1 downloaded, %n new trading day</numerusform>
            <numerusform>%1 downloaded, %n new trading days</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 没有可下载的数据</source>
        <translation>Nothing to download for %1</translation>
    </message>
</context>
<context>
    <name>terminal::FormulaPanel</name>
    <message>
        <source>叠加在主图</source>
        <translation>Overlay on main chart</translation>
    </message>
    <message>
        <source>替换主图</source>
        <translation>Replace main chart</translation>
    </message>
    <message>
        <source>副图</source>
        <translation>Indicator pane</translation>
    </message>
    <message>
        <source>查找指标</source>
        <translation>Find indicator</translation>
    </message>
    <message>
        <source>恢复主图</source>
        <translation>Restore main chart</translation>
    </message>
    <message>
        <source>新建指标…</source>
        <translation>New indicator…</translation>
    </message>
    <message>
        <source>显示</source>
        <translation>Show</translation>
    </message>
    <message>
        <source>修改指标参数</source>
        <translation>Indicator parameters</translation>
    </message>
    <message>
        <source>编辑指标</source>
        <translation>Edit indicator</translation>
    </message>
</context>
<context>
    <name>terminal::ImportDialog</name>
    <message>
        <source>导入行情</source>
        <translation>Import market data</translation>
    </message>
    <message>
        <source>文件路径，按回车加入</source>
        <translation>File path, Enter adds it</translation>
    </message>
    <message>
        <source>选择文件(&amp;F)…</source>
        <translation>Choose &amp;files…</translation>
    </message>
    <message>
        <source>文件(&amp;P)</source>
        <translation>File &amp;path</translation>
    </message>
    <message>
        <source>市场(&amp;M)</source>
        <translation>&amp;Market</translation>
    </message>
    <message>
        <source>代码(&amp;C)</source>
        <translation>&amp;Code</translation>
    </message>
    <message>
        <source>名称(&amp;N)</source>
        <translation>&amp;Name</translation>
    </message>
    <message>
        <source>列(&amp;L)…</source>
        <translation>Co&amp;lumns…</translation>
    </message>
    <message>
        <source>指定文件的哪一列是什么</source>
        <translation>Tell which column of the file is what</translation>
    </message>
    <message>
        <source>按文件中的时间确定每日的交易时段(&amp;T)</source>
        <translation>Take each day&apos;s sessions from the &amp;times in the file</translation>
    </message>
    <message>
        <source>导入(&amp;I)</source>
        <translation>&amp;Import</translation>
    </message>
    <message>
        <source>停止(&amp;S)</source>
        <translation>&amp;Stop</translation>
    </message>
    <message>
        <source>关闭</source>
        <translation>Close</translation>
    </message>
    <message>
        <source>选择行情文件</source>
        <translation>Choose files of market data</translation>
    </message>
    <message>
        <source>行情文件 (*.csv *.txt);;所有文件 (*)</source>
        <translation>Market data (*.csv *.txt);;All files (*)</translation>
    </message>
    <message>
        <source>文件中有多只证券</source>
        <translation>The file has several instruments</translation>
    </message>
    <message>
        <source>无法导入：%1</source>
        <translation>Cannot be imported: %1</translation>
    </message>
    <message>
        <source>%1，%2，约 %3 行</source>
        <translation>%1, %2, about %3 rows</translation>
    </message>
    <message>
        <source>%1 至 %2</source>
        <translation>%1 to %2</translation>
    </message>
    <message>
        <source>%1 行/秒</source>
        <translation>%1 rows/s</translation>
    </message>
    <message>
        <source>%1（%2 行，%3 行/秒）</source>
        <translation>%1 (%2 rows, %3 rows/s)</translation>
    </message>
    <message>
        <source>%1 的导入已停止，行情库未改变</source>
        <translation>The import of %1 was stopped; the store is unchanged</translation>
    </message>
    <message>
        <source>导入失败，行情库未改变：%1</source>
        <translation>Import failed, the store is unchanged: %1</translation>
    </message>
</context>
<context>
    <name>terminal::LogWatch</name>
    <message>
        <source>日志</source>
        <translation>Log</translation>
    </message>
    <message>
        <source>日志写不进去，已丢失 %1 行；请检查磁盘空间</source>
        <translation>The log cannot be written, lines lost: %1; check the disk space</translation>
    </message>
</context>
<context>
    <name>terminal::MessagePanel</name>
    <message>
        <source>时间</source>
        <translation>Time</translation>
    </message>
    <message>
        <source>公式</source>
        <translation>Formula</translation>
    </message>
    <message>
        <source>行</source>
        <translation>Line</translation>
    </message>
    <message>
        <source>内容</source>
        <translation>Message</translation>
    </message>
    <message>
        <source>次数</source>
        <translation>Count</translation>
    </message>
    <message>
        <source>清空</source>
        <translation>Clear</translation>
    </message>
    <message>
        <source>关闭</source>
        <translation>Close</translation>
    </message>
    <message numerus="yes">
        <source>消息 %n 条</source>
        <translation>
            <numerusform>%n message</numerusform>
            <numerusform>%n messages</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>terminal::QuoteListDialog</name>
    <message>
        <source>移出列表</source>
        <translation>Remove</translation>
    </message>
    <message>
        <source>代码</source>
        <translation>Code</translation>
    </message>
    <message>
        <source>名称</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>最新</source>
        <translation>Last</translation>
    </message>
    <message>
        <source>涨跌幅</source>
        <translation>Change %</translation>
    </message>
    <message>
        <source>双击或回车显示品种</source>
        <translation>Double click or Enter shows the instrument</translation>
    </message>
</context>
<context>
    <name>terminal::QuoteLists</name>
    <message>
        <source>%1 %2 不属于任何板块</source>
        <translation>%1 %2 belongs to no sector</translation>
    </message>
    <message>
        <source>所属板块分析</source>
        <translation>Sector analysis</translation>
    </message>
    <message>
        <source>自选股</source>
        <translation>Watchlist</translation>
    </message>
</context>
<context>
    <name>terminal::ReplayControl</name>
    <message>
        <source>行情回放：%1</source>
        <translation>Replay: %1</translation>
    </message>
</context>
<context>
    <name>terminal::ReplayPanel</name>
    <message>
        <source>行情回放</source>
        <translation>Replay</translation>
    </message>
    <message numerus="yes">
        <source>每秒 %n 分钟</source>
        <translation>
            <numerusform>%n minute a second</numerusform>
            <numerusform>%n minutes a second</numerusform>
        </translation>
    </message>
    <message>
        <source>重新开始</source>
        <translation>Start again</translation>
    </message>
    <message>
        <source>退出回放</source>
        <translation>Leave replay</translation>
    </message>
    <message>
        <source>继续</source>
        <translation>Resume</translation>
    </message>
    <message>
        <source>暂停</source>
        <translation>Pause</translation>
    </message>
    <message>
        <source>%1 %2 至 %3</source>
        <translation>%1 %2 to %3</translation>
    </message>
    <message>
        <source>回放结束</source>
        <translation>Replay finished</translation>
    </message>
    <message>
        <source>回放到 %1</source>
        <translation>Replayed up to %1</translation>
    </message>
</context>
<context>
    <name>terminal::SmartKeyboard</name>
    <message>
        <source>键盘精灵</source>
        <translation>Quick keyboard</translation>
    </message>
</context>
<context>
    <name>terminal::StageRankingDialog</name>
    <message>
        <source>停止</source>
        <translation>Stop</translation>
    </message>
    <message>
        <source>阶段排序 %1 %2 - %3 %4</source>
        <translation>Stage ranking %1 %2 - %3 %4</translation>
    </message>
    <message>
        <source>起始时间晚于终止时间，请重新选择时段</source>
        <translation>The start is later than the end: choose another period</translation>
    </message>
    <message>
        <source>正在计算</source>
        <translation>Computing</translation>
    </message>
    <message numerus="yes">
        <source>已停止，%n 个品种</source>
        <translation>
            <numerusform>Stopped, %n instrument</numerusform>
            <numerusform>Stopped, %n instruments</numerusform>
        </translation>
    </message>
    <message>
        <source>该时段没有成交的品种</source>
        <translation>No instrument was traded in this period</translation>
    </message>
    <message numerus="yes">
        <source>%n 个品种，双击或回车显示</source>
        <translation>
            <numerusform>%n instrument, double click or Enter shows it</numerusform>
            <numerusform>%n instruments, double click or Enter shows one</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>terminal::StageRankingModel</name>
    <message>
        <source>代码</source>
        <translation>Code</translation>
    </message>
    <message>
        <source>名称</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>最高</source>
        <translation>High</translation>
    </message>
    <message>
        <source>最低</source>
        <translation>Low</translation>
    </message>
    <message>
        <source>成交量</source>
        <translation>Volume</translation>
    </message>
    <message>
        <source>涨跌</source>
        <translation>Change</translation>
    </message>
    <message>
        <source>涨幅</source>
        <translation>Change %</translation>
    </message>
    <message>
        <source>成交额</source>
        <translation>Amount</translation>
    </message>
    <message>
        <source>振幅</source>
        <translation>Amplitude</translation>
    </message>
    <message>
        <source>平均价</source>
        <translation>Average</translation>
    </message>
</context>
<context>
    <name>terminal::StatusLine</name>
    <message>
        <source>市场时间 %1</source>
        <translation>Market time %1</translation>
    </message>
</context>
<context>
    <name>terminal::StretchQuotesDialog</name>
    <message>
        <source>时间</source>
        <translation>Time</translation>
    </message>
    <message>
        <source>开盘</source>
        <translation>Open</translation>
    </message>
    <message>
        <source>最高</source>
        <translation>High</translation>
    </message>
    <message>
        <source>最低</source>
        <translation>Low</translation>
    </message>
    <message>
        <source>最新</source>
        <translation>Last</translation>
    </message>
    <message>
        <source>涨跌</source>
        <translation>Change</translation>
    </message>
    <message>
        <source>成交量</source>
        <translation>Volume</translation>
    </message>
    <message>
        <source>成交额</source>
        <translation>Amount</translation>
    </message>
    <message>
        <source>时段行情 %1 %2 %3 - %4</source>
        <translation>Period quotes %1 %2 %3 - %4</translation>
    </message>
    <message>
        <source>正在读取</source>
        <translation>Reading</translation>
    </message>
    <message numerus="yes">
        <source>%n 分钟</source>
        <translation>
            <numerusform>%n minute</numerusform>
            <numerusform>%n minutes</numerusform>
        </translation>
    </message>
    <message>
        <source>该时段没有行情</source>
        <translation>No quotes in this period</translation>
    </message>
</context>
<context>
    <name>terminal::TerminalWindow</name>
    <message>
        <source>分时行情</source>
        <translation>Intraday quotes</translation>
    </message>
    <message>
        <source>这个副图的公式没有参数</source>
        <translation>The formula of this pane has no parameters</translation>
    </message>
    <message>
        <source>已过滤重复股票，在同时显示多个品种的视图中生效</source>
        <translation>Duplicate shares are filtered, in views that show several instruments</translation>
    </message>
    <message>
        <source>不再过滤重复股票</source>
        <translation>Duplicate shares are no longer filtered</translation>
    </message>
    <message>
        <source>配置</source>
        <translation>Configuration</translation>
    </message>
    <message>
        <source>没有找到“%1”，相近的有：%2</source>
        <translation>&quot;%1&quot; was not found, the nearest are: %2</translation>
    </message>
    <message>
        <source>%1 在 %2 没有行情</source>
        <translation>%1 has no quotes on %2</translation>
    </message>
</context>
<context>
    <name>terminal::WallWindow</name>
    <message>
        <source>分时行情墙</source>
        <translation>Intraday quotes wall</translation>
    </message>
</context>
</TS>
