<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="zh_CN">
<context>
    <name>GZ::CHpfDataTable</name>
    <message>
        <source>开仓</source>
        <translation> open</translation>
    </message>
    <message>
        <source>平仓</source>
        <translation> close</translation>
    </message>
    <message>
        <source>平今</source>
        <translation> close today</translation>
    </message>
    <message>
        <source>平昨</source>
        <translation> close earlier</translation>
    </message>
    <message>
        <source>已报</source>
        <translation>Reported</translation>
    </message>
    <message>
        <source>部成</source>
        <translation>Partly filled</translation>
    </message>
    <message>
        <source>已成</source>
        <translation>Filled</translation>
    </message>
    <message>
        <source>部成已撤</source>
        <translation>Part filled, cancelled</translation>
    </message>
    <message>
        <source>已撤</source>
        <translation>Cancelled</translation>
    </message>
    <message>
        <source>废单</source>
        <translation>Rejected</translation>
    </message>
    <message>
        <source>状态 %1</source>
        <translation>Status %1</translation>
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
        <source>委托时间</source>
        <translation>Order time</translation>
    </message>
    <message>
        <source>资金账号</source>
        <translation>Account</translation>
    </message>
    <message>
        <source>证券代码</source>
        <translation>Code</translation>
    </message>
    <message>
        <source>证券名称</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>买卖方向</source>
        <translation>Side</translation>
    </message>
    <message>
        <source>委托价格</source>
        <translation>Order price</translation>
    </message>
    <message>
        <source>委托数量</source>
        <translation>Order quantity</translation>
    </message>
    <message>
        <source>成交数量</source>
        <translation>Filled quantity</translation>
    </message>
    <message>
        <source>委托状态</source>
        <translation>Order status</translation>
    </message>
    <message>
        <source>交易策略</source>
        <translation>Strategy</translation>
    </message>
    <message>
        <source>合同编号</source>
        <translation>Contract no.</translation>
    </message>
    <message>
        <source>委托日期</source>
        <translation>Order date</translation>
    </message>
    <message>
        <source>成交时间</source>
        <translation>Deal time</translation>
    </message>
    <message>
        <source>成交价格</source>
        <translation>Deal price</translation>
    </message>
    <message>
        <source>成交金额</source>
        <translation>Deal amount</translation>
    </message>
    <message>
        <source>成交编号</source>
        <translation>Deal no.</translation>
    </message>
    <message>
        <source>编号</source>
        <translation>No.</translation>
    </message>
</context>
<context>
    <name>GZ::CMessageBox</name>
    <message>
        <source>确定</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>是</source>
        <translation>Yes</translation>
    </message>
    <message>
        <source>否</source>
        <translation>No</translation>
    </message>
    <message>
        <source>保存</source>
        <translation>Save</translation>
    </message>
    <message>
        <source>不保存</source>
        <translation>Don&apos;t save</translation>
    </message>
    <message>
        <source>重试</source>
        <translation>Retry</translation>
    </message>
    <message>
        <source>关闭</source>
        <translation>Close</translation>
    </message>
</context>
<context>
    <name>GZ::CStandardTable</name>
    <message>
        <source>复制单元格</source>
        <translation>Copy cell</translation>
    </message>
    <message>
        <source>复制选中行</source>
        <translation>Copy selected rows</translation>
    </message>
    <message>
        <source>复制全部</source>
        <translation>Copy all</translation>
    </message>
    <message>
        <source>全选</source>
        <translation>Select all</translation>
    </message>
    <message>
        <source>显示列</source>
        <translation>Columns</translation>
    </message>
    <message>
        <source>自动列宽</source>
        <translation>Fit column widths</translation>
    </message>
    <message>
        <source>取消排序</source>
        <translation>Clear sorting</translation>
    </message>
    <message>
        <source>恢复缺省布局</source>
        <translation>Restore default layout</translation>
    </message>
</context>
<context>
    <name>GZ::FormulaEditorWindow</name>
    <message>
        <source>提示</source>
        <translation>Notice</translation>
    </message>
    <message>
        <source>检查</source>
        <translation>Check</translation>
    </message>
    <message>
        <source>保存</source>
        <translation>Save</translation>
    </message>
    <message>
        <source>恢复内置</source>
        <translation>Restore built-in</translation>
    </message>
    <message>
        <source>普通运行</source>
        <translation>Ordinary run</translation>
    </message>
    <message>
        <source>带运行数据</source>
        <translation>Run with handed-over data</translation>
    </message>
    <message>
        <source>应用</source>
        <translation>Apply</translation>
    </message>
    <message>
        <source>%1[*] - 指标编辑器</source>
        <translation>%1[*] - Indicator editor</translation>
    </message>
    <message>
        <source>新指标</source>
        <translation>New indicator</translation>
    </message>
    <message>
        <source>第 %1 行：%2</source>
        <translation>Line %1: %2</translation>
    </message>
    <message>
        <source>检查通过</source>
        <translation>No faults found</translation>
    </message>
    <message>
        <source>已保存</source>
        <translation>Saved</translation>
    </message>
    <message>
        <source>已应用</source>
        <translation>Applied</translation>
    </message>
    <message>
        <source>放弃自己的修改，恢复内置的 %1？</source>
        <translation>Discard your changes and restore the built-in %1?</translation>
    </message>
    <message>
        <source>已恢复内置指标</source>
        <translation>Built-in indicator restored</translation>
    </message>
    <message>
        <source>指标已修改，是否保存？</source>
        <translation>The indicator has been changed. Save it?</translation>
    </message>
</context>
<context>
    <name>GZ::MainLines</name>
    <message>
        <source>价格</source>
        <translation>Price</translation>
    </message>
    <message>
        <source>均价</source>
        <translation>Average</translation>
    </message>
    <message>
        <source>成交量</source>
        <translation>Volume</translation>
    </message>
</context>
<context>
    <name>GZ::Text</name>
    <message>
        <source>12万亿 8亿 4万</source>
        <extracomment>Units of large numbers, each behind its power of ten, the largest first.</extracomment>
        <translation>12T 9B 6M 3K</translation>
    </message>
</context>
<context>
    <name>GZ::Theme</name>
    <message>
        <source>打不开主题文件“%1”：%2</source>
        <translation>Cannot open theme file &quot;%1&quot;: %2</translation>
    </message>
    <message>
        <source>主题文件“%1”：%2</source>
        <translation>Theme file &quot;%1&quot;: %2</translation>
    </message>
    <message>
        <source>没有名为“%1”的主题，也没有这个文件。内置主题：%2</source>
        <translation>There is no theme named &quot;%1&quot;, nor such a file. Built-in themes: %2</translation>
    </message>
    <message>
        <source>“width”和“height”应为1到512的整数</source>
        <translation>&quot;width&quot; and &quot;height&quot; should be whole numbers from 1 to 512</translation>
    </message>
    <message>
        <source>第%1个图形无法识别</source>
        <translation>Shape %1 is not recognised</translation>
    </message>
    <message>
        <source>“%1”应为一个对象</source>
        <translation>&quot;%1&quot; should be an object</translation>
    </message>
    <message>
        <source>不是有效的JSON（第%1个字节处：%2）</source>
        <translation>Not valid JSON (at byte %1: %2)</translation>
    </message>
    <message>
        <source>最外层应为一个对象</source>
        <translation>The outermost value should be an object</translation>
    </message>
    <message>
        <source>颜色“%1”应写作“#rrggbb”或“#aarrggbb”</source>
        <translation>Colour &quot;%1&quot; should be written &quot;#rrggbb&quot; or &quot;#aarrggbb&quot;</translation>
    </message>
    <message>
        <source>字体“%1”需要“families”（字体名列表）、“pixelSize”（1到200）和可选的“weight”（1到99）</source>
        <translation>Font &quot;%1&quot; needs &quot;families&quot; (a list of font names), &quot;pixelSize&quot; (1 to 200) and optionally &quot;weight&quot; (1 to 99)</translation>
    </message>
    <message>
        <source>图像“%1”：%2</source>
        <translation>Image &quot;%1&quot;: %2</translation>
    </message>
</context>
<context>
    <name>GZ::Wording</name>
    <message>
        <source>、</source>
        <comment>between names</comment>
        <translation>, </translation>
    </message>
    <message>
        <source>，</source>
        <comment>between entries</comment>
        <translation>, </translation>
    </message>
    <message>
        <source>；</source>
        <comment>between phrases</comment>
        <translation>; </translation>
    </message>
</context>
<context>
    <name>TC::AccessibleWords</name>
    <message>
        <source>分时图</source>
        <translation>Intraday chart</translation>
    </message>
    <message>
        <source>分时图 %1</source>
        <translation>Intraday chart %1</translation>
    </message>
    <message>
        <source>左侧坐标轴</source>
        <translation>Left axis</translation>
    </message>
    <message>
        <source>右侧坐标轴</source>
        <translation>Right axis</translation>
    </message>
    <message>
        <source>时间轴</source>
        <translation>Time axis</translation>
    </message>
    <message>
        <source>时间</source>
        <translation>Time</translation>
    </message>
    <message>
        <source>副图</source>
        <translation>Indicator pane</translation>
    </message>
</context>
<context>
    <name>TC::CAddSelfStockDialog</name>
    <message numerus="yes">
        <source>等%n个品种</source>
        <comment>behind some of their names</comment>
        <translation>
            <numerusform>%n instrument in all</numerusform>
            <numerusform>%n instruments in all</numerusform>
        </translation>
    </message>
    <message>
        <source>加入自选股</source>
        <translation>Add to watchlist</translation>
    </message>
    <message>
        <source>选择一个列表，或键入新列表的名称</source>
        <translation>Choose a list, or type the name of a new one</translation>
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
        <source>列表中已有 %1</source>
        <translation>Already in the list: %1</translation>
    </message>
    <message>
        <source>请键入列表的名称</source>
        <translation>Type the name of a list</translation>
    </message>
</context>
<context>
    <name>TC::CCrossLineWidget</name>
    <message>
        <source>非法值</source>
        <translation>Invalid</translation>
    </message>
</context>
<context>
    <name>TC::CFormulaEditorManager</name>
    <message>
        <source>提示</source>
        <translation>Notice</translation>
    </message>
    <message>
        <source>%1 是脚本模型，请编辑文件夹 %2 中的 %3.py</source>
        <translation>%1 is a script model: edit %3.py in folder %2</translation>
    </message>
</context>
<context>
    <name>TC::CFormulaOperateManager</name>
    <message>
        <source>公式不能修改</source>
        <translation>The formula cannot be changed</translation>
    </message>
</context>
<context>
    <name>TC::CGraphAxisWidget</name>
    <message>
        <source>非法值</source>
        <translation>Invalid</translation>
    </message>
</context>
<context>
    <name>TC::CIndexModelWidget</name>
    <message>
        <source>更多指标和模板</source>
        <translation>More indicators and templates</translation>
    </message>
    <message>
        <source>保存模板</source>
        <translation>Save template</translation>
    </message>
    <message>
        <source>模板名称（%1）：</source>
        <translation>Template name (%1):</translation>
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
        <source>提示</source>
        <translation>Notice</translation>
    </message>
    <message>
        <source>模板“%1”已存在，是否替换？</source>
        <translation>Template &quot;%1&quot; exists already. Replace it?</translation>
    </message>
</context>
<context>
    <name>TC::CIndexTitleWidget</name>
    <message>
        <source>关闭</source>
        <translation>Close</translation>
    </message>
    <message>
        <source>菜单</source>
        <translation>Menu</translation>
    </message>
    <message>
        <source>设置</source>
        <translation>Settings</translation>
    </message>
    <message>
        <source>多看一日</source>
        <translation>Show one more day</translation>
    </message>
    <message>
        <source>少看一日</source>
        <translation>Show one day less</translation>
    </message>
    <message>
        <source>回到单日</source>
        <translation>Back to one day</translation>
    </message>
    <message>
        <source>涨幅:%1</source>
        <translation>Change %:%1</translation>
    </message>
    <message>
        <source>买入额:%1</source>
        <translation>Bought:%1</translation>
    </message>
    <message>
        <source>卖出额:%1</source>
        <translation>Sold:%1</translation>
    </message>
    <message>
        <source>净买额:%1</source>
        <translation>Net bought:%1</translation>
    </message>
    <message>
        <source>盈亏:%1</source>
        <translation>P/L:%1</translation>
    </message>
    <message>
        <source>配平:%1</source>
        <translation>Balance:%1</translation>
    </message>
    <message>
        <source>涨跌:%1</source>
        <translation>Change:%1</translation>
    </message>
</context>
<context>
    <name>TC::CModifyModelParamDialog</name>
    <message>
        <source>参数</source>
        <translation>Parameter</translation>
    </message>
    <message>
        <source>值</source>
        <translation>Value</translation>
    </message>
    <message>
        <source>缺省值</source>
        <translation>Default</translation>
    </message>
    <message>
        <source>范围</source>
        <translation>Range</translation>
    </message>
    <message>
        <source>说明</source>
        <translation>Description</translation>
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
        <source>恢复缺省</source>
        <translation>Restore defaults</translation>
    </message>
    <message>
        <source>修改指标参数 - %1</source>
        <translation>Indicator parameters - %1</translation>
    </message>
    <message>
        <source>该指标没有参数</source>
        <translation>This indicator has no parameters</translation>
    </message>
    <message>
        <source>参数 %1 的值 %2 超出范围 %3</source>
        <translation>Parameter %1: %2 is outside %3</translation>
    </message>
    <message>
        <source>参数 %1 的值“%2”不是数字</source>
        <translation>Parameter %1: &quot;%2&quot; is not a number</translation>
    </message>
</context>
<context>
    <name>TC::CRealtimeData</name>
    <message>
        <source>非法值</source>
        <translation>Invalid</translation>
    </message>
</context>
<context>
    <name>TC::CRealtimeDealDialog</name>
    <message>
        <source>成交明细</source>
        <translation>Deals</translation>
    </message>
</context>
<context>
    <name>TC::CRealtimeLinkageSettingDialog</name>
    <message>
        <source>自动全选</source>
        <translation>Keep all selected</translation>
    </message>
    <message>
        <source>全选</source>
        <translation>All</translation>
    </message>
    <message>
        <source>反选</source>
        <translation>Invert</translation>
    </message>
    <message>
        <source>交易策略</source>
        <translation>Strategy</translation>
    </message>
    <message>
        <source>选择证券</source>
        <translation>Instruments</translation>
    </message>
    <message>
        <source>交易详情 [分时]</source>
        <translation>Trade details [intraday]</translation>
    </message>
    <message>
        <source>清空导入数据</source>
        <translation>Clear imports</translation>
    </message>
    <message>
        <source>资金账号</source>
        <translation>Account</translation>
    </message>
    <message>
        <source>交易数据</source>
        <translation>Trade data</translation>
    </message>
    <message>
        <source>交易详情</source>
        <translation>Trade details</translation>
    </message>
    <message>
        <source>全部查看</source>
        <translation>All</translation>
    </message>
    <message>
        <source>按策略查看</source>
        <translation>By strategy</translation>
    </message>
    <message>
        <source>委托</source>
        <translation>Orders</translation>
    </message>
    <message>
        <source>成交</source>
        <translation>Deals</translation>
    </message>
    <message>
        <source>任务</source>
        <translation>Tasks</translation>
    </message>
    <message>
        <source>买卖额</source>
        <translation>Traded</translation>
    </message>
    <message>
        <source>净买额</source>
        <translation>Net</translation>
    </message>
    <message>
        <source>盈亏</source>
        <translation>P/L</translation>
    </message>
    <message>
        <source>配平</source>
        <translation>Bal.</translation>
    </message>
    <message>
        <source>导入委托</source>
        <translation>Import orders</translation>
    </message>
    <message>
        <source>导入成交</source>
        <translation>Import deals</translation>
    </message>
    <message>
        <source>导入委托数据</source>
        <translation>Import orders</translation>
    </message>
    <message>
        <source>导入成交数据</source>
        <translation>Import deals</translation>
    </message>
    <message>
        <source>委托导入失败, 请检查导入文件和本机Excel安装情况</source>
        <translation>The orders could not be imported. Check the file and the Excel installation of this machine.</translation>
    </message>
    <message>
        <source>成交导入失败, 请检查导入文件和本机Excel安装情况</source>
        <translation>The deals could not be imported. Check the file and the Excel installation of this machine.</translation>
    </message>
</context>
<context>
    <name>TC::CRealtimeMainWidget</name>
    <message>
        <source> 时段统计</source>
        <translation> Region statistics</translation>
    </message>
</context>
<context>
    <name>TC::CRealtimeOrderDialog</name>
    <message>
        <source>委托明细</source>
        <translation>Orders</translation>
    </message>
</context>
<context>
    <name>TC::CRealtimeStageDialog</name>
    <message>
        <source>阶段排序</source>
        <translation>Stage ranking</translation>
    </message>
    <message>
        <source>阶段最高</source>
        <translation>Stage high</translation>
    </message>
    <message>
        <source>阶段最低</source>
        <translation>Stage low</translation>
    </message>
    <message>
        <source>阶段成交量</source>
        <translation>Stage volume</translation>
    </message>
    <message>
        <source>阶段涨跌</source>
        <translation>Stage change</translation>
    </message>
    <message>
        <source>阶段涨幅</source>
        <translation>Stage change %</translation>
    </message>
    <message>
        <source>阶段成交额</source>
        <translation>Stage amount</translation>
    </message>
    <message>
        <source>阶段振幅</source>
        <translation>Stage amplitude</translation>
    </message>
    <message>
        <source>阶段平均价</source>
        <translation>Stage average price</translation>
    </message>
    <message>
        <source>确定</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>关闭</source>
        <translation>Close</translation>
    </message>
</context>
<context>
    <name>TC::CRealtimeStatisticDialog</name>
    <message>
        <source>阶段排序</source>
        <translation>Ranking</translation>
    </message>
    <message>
        <source>时段行情</source>
        <translation>Quotes</translation>
    </message>
    <message>
        <source>时段统计</source>
        <translation>Region</translation>
    </message>
    <message>
        <source>追踪统计</source>
        <translation>Tracking</translation>
    </message>
    <message>
        <source>实时</source>
        <translation>Live</translation>
    </message>
    <message numerus="yes">
        <source>共 %n 个周期</source>
        <translation>
            <numerusform>%n period</numerusform>
            <numerusform>%n periods</numerusform>
        </translation>
    </message>
    <message>
        <source>合同编号:</source>
        <translation>Order:</translation>
    </message>
    <message>
        <source>起始时间:</source>
        <translation>Start:</translation>
    </message>
    <message>
        <source>终止时间:</source>
        <translation>End:</translation>
    </message>
</context>
<context>
    <name>TC::CRealtimeTaskTableDialog</name>
    <message>
        <source>任务详情</source>
        <translation>Tasks</translation>
    </message>
    <message>
        <source>%1%2%3</source>
        <comment>operation, quantity, unit</comment>
        <translation>%1 %2 %3</translation>
    </message>
    <message>
        <source>元</source>
        <translation>yuan</translation>
    </message>
    <message>
        <source>以%1%2</source>
        <comment>price type, order</comment>
        <translation>at %1: %2</translation>
    </message>
    <message>
        <source>任务 %1</source>
        <translation>Task %1</translation>
    </message>
    <message>
        <source>%1 开始</source>
        <translation>started %1</translation>
    </message>
    <message>
        <source>已完成 %1/%2</source>
        <translation>done %1/%2</translation>
    </message>
    <message>
        <source>资金账号</source>
        <translation>Account</translation>
    </message>
    <message>
        <source>证券名称</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>开始时间</source>
        <translation>Start</translation>
    </message>
    <message>
        <source>结束时间</source>
        <translation>End</translation>
    </message>
    <message>
        <source>进度</source>
        <translation>Progress</translation>
    </message>
    <message>
        <source>详情</source>
        <translation>Details</translation>
    </message>
    <message>
        <source>状态</source>
        <translation>Status</translation>
    </message>
    <message>
        <source>以</source>
        <translation>at</translation>
    </message>
</context>
<context>
    <name>TC::CRealtimeWidget</name>
    <message>
        <source>运行模型</source>
        <translation>Run model</translation>
    </message>
</context>
<context>
    <name>TC::CSmartKeyboardDialog</name>
    <message>
        <source>指数</source>
        <translation>Index</translation>
    </message>
    <message>
        <source>快捷键</source>
        <translation>Shortcut</translation>
    </message>
    <message>
        <source>指标</source>
        <translation>Indicator</translation>
    </message>
    <message>
        <source>功能</source>
        <translation>Function</translation>
    </message>
    <message>
        <source>代码/名称/拼音首字母</source>
        <translation>Code, name or pinyin initials</translation>
    </message>
    <message>
        <source>键入后用↑↓选择，回车确定</source>
        <translation>Type, choose with ↑↓, confirm with Enter</translation>
    </message>
    <message>
        <source>没有匹配的品种</source>
        <translation>No instrument matches</translation>
    </message>
    <message numerus="yes">
        <source>共%n项，↑↓选择，回车确定</source>
        <translation>
            <numerusform>%n match, choose with ↑↓, confirm with Enter</numerusform>
            <numerusform>%n matches, choose with ↑↓, confirm with Enter</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>TC::CTaskTableCancelButton</name>
    <message>
        <source>撤销</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>提示</source>
        <translation>Notice</translation>
    </message>
    <message>
        <source>您确定要撤销任务?</source>
        <translation>Do you really want to cancel the task?</translation>
    </message>
</context>
<context>
    <name>TC::CViewVariableDialog</name>
    <message>
        <source>查看变量</source>
        <translation>Variables</translation>
    </message>
</context>
<context>
    <name>TC::DefaultServices</name>
    <message>
        <source>自选</source>
        <translation>Watchlist</translation>
    </message>
    <message>
        <source>不能读取文件</source>
        <translation>The file cannot be read</translation>
    </message>
</context>
<context>
    <name>TC::FormulaCommands</name>
    <message>
        <source>Velmar指标终端</source>
        <translation>Velmar indicator terminal</translation>
    </message>
    <message>
        <source>系统指标不可编辑!</source>
        <translation>System indicators cannot be edited!</translation>
    </message>
    <message>
        <source>提示</source>
        <translation>Notice</translation>
    </message>
    <message>
        <source>该策略正在模型交易中运行,编辑策略不会影响运行情况,是否继续编辑?</source>
        <translation>This strategy is running in model trading. Editing does not affect the run. Continue?</translation>
    </message>
</context>
<context>
    <name>TC::FormulaMenu</name>
    <message>
        <source>叠加指标</source>
        <translation>Overlay indicator</translation>
    </message>
    <message>
        <source>更改副图指标</source>
        <translation>Change pane indicator</translation>
    </message>
    <message>
        <source>更改指标</source>
        <translation>Change indicator</translation>
    </message>
</context>
<context>
    <name>TC::GraphLayers</name>
    <message>
        <source>组合模型只能在指数类视图下显示！</source>
        <translation>Portfolio models can be shown in index views only!</translation>
    </message>
</context>
<context>
    <name>TC::GraphMenu</name>
    <message>
        <source>AH股叠加</source>
        <translation>Overlay A/H share</translation>
    </message>
    <message>
        <source>取消AH股叠加</source>
        <translation>Remove A/H overlay</translation>
    </message>
    <message>
        <source>叠加板块指数</source>
        <translation>Overlay sector index</translation>
    </message>
    <message>
        <source>取消叠加品种</source>
        <translation>Remove overlaid instruments</translation>
    </message>
    <message>
        <source>申万一级</source>
        <translation>Sector level 1</translation>
    </message>
    <message>
        <source>申万二级</source>
        <translation>Sector level 2</translation>
    </message>
    <message>
        <source>申万三级</source>
        <translation>Sector level 3</translation>
    </message>
    <message>
        <source>显示行情回放控制面板</source>
        <translation>Show replay control panel</translation>
    </message>
    <message>
        <source>添加指标</source>
        <translation>Add indicator</translation>
    </message>
    <message>
        <source>恢复主图</source>
        <translation>Restore main chart</translation>
    </message>
    <message>
        <source>所属板块分析</source>
        <translation>Sector analysis</translation>
    </message>
    <message>
        <source>显示盘后固定价格成交</source>
        <translation>Show after-hours fixed-price trading</translation>
    </message>
    <message>
        <source>取消叠加指标</source>
        <translation>Remove overlaid indicator</translation>
    </message>
    <message>
        <source>自动叠加转债正股品种</source>
        <translation>Overlay underlying of convertible bond</translation>
    </message>
    <message>
        <source>叠加品种</source>
        <translation>Overlay instrument</translation>
    </message>
    <message>
        <source>叠加无坐标品种</source>
        <translation>Overlay instrument without axis</translation>
    </message>
    <message>
        <source>修改指标参数</source>
        <translation>Indicator parameters</translation>
    </message>
    <message>
        <source>编辑指标</source>
        <translation>Edit indicator</translation>
    </message>
    <message>
        <source>显示成交量</source>
        <translation>Show volume</translation>
    </message>
    <message>
        <source>显示渐变色</source>
        <translation>Show gradient</translation>
    </message>
    <message>
        <source>加入自选股</source>
        <translation>Add to watchlist</translation>
    </message>
    <message>
        <source>自动切换周期</source>
        <translation>Switch period automatically</translation>
    </message>
    <message>
        <source>时段统计</source>
        <translation>Region statistics</translation>
    </message>
    <message>
        <source>生成千档区域范围</source>
        <translation>Set depth-of-book region</translation>
    </message>
    <message>
        <source>显示行情回放界面</source>
        <translation>Show replay</translation>
    </message>
    <message>
        <source>刷新</source>
        <translation>Refresh</translation>
    </message>
    <message>
        <source>关闭指标</source>
        <translation>Close indicator</translation>
    </message>
    <message>
        <source>复制</source>
        <translation>Copy</translation>
    </message>
    <message>
        <source>复制运行进度</source>
        <translation>Copy run progress</translation>
    </message>
    <message>
        <source>导出公式</source>
        <translation>Export formula</translation>
    </message>
    <message>
        <source>新建工作组</source>
        <translation>New workgroup</translation>
    </message>
    <message>
        <source>显示交易数据</source>
        <translation>Show trade data</translation>
    </message>
    <message>
        <source>过滤重复股票</source>
        <translation>Filter duplicate shares</translation>
    </message>
    <message>
        <source>复制请求信息</source>
        <translation>Copy request information</translation>
    </message>
    <message>
        <source>下载数据</source>
        <translation>Download data</translation>
    </message>
    <message>
        <source>全选</source>
        <translation>Select all</translation>
    </message>
    <message>
        <source>显示详细交易数据</source>
        <translation>Show detailed trade data</translation>
    </message>
</context>
<context>
    <name>TC::HiddenVariables</name>
    <message>
        <source>时间:%1</source>
        <translation>Time:%1</translation>
    </message>
</context>
<context>
    <name>TC::IndexBaseData</name>
    <message>
        <source>时间</source>
        <translation>Time</translation>
    </message>
    <message>
        <source>线%1</source>
        <translation>Line%1</translation>
    </message>
</context>
<context>
    <name>TC::OverlayCommands</name>
    <message>
        <source>提示</source>
        <translation>Notice</translation>
    </message>
    <message>
        <source>已达到允许叠加最大限制数3!</source>
        <translation>No more than 3 instruments can be overlaid!</translation>
    </message>
    <message>
        <source>叠加品种</source>
        <translation>Overlay instrument</translation>
    </message>
    <message>
        <source>叠加无坐标品种</source>
        <translation>Overlay instrument without axis</translation>
    </message>
</context>
<context>
    <name>TC::RegionFigure</name>
    <message>
        <source>起始价:</source>
        <translation>Start:</translation>
    </message>
    <message>
        <source>最高价:</source>
        <translation>High:</translation>
    </message>
    <message>
        <source>最低价:</source>
        <translation>Low:</translation>
    </message>
    <message>
        <source>最终价:</source>
        <translation>Last:</translation>
    </message>
    <message>
        <source>总手:</source>
        <translation>Volume:</translation>
    </message>
    <message>
        <source>涨跌幅:</source>
        <translation>Change %:</translation>
    </message>
    <message>
        <source>均价:</source>
        <translation>Average:</translation>
    </message>
    <message>
        <source>振幅:</source>
        <translation>Amplitude:</translation>
    </message>
    <message>
        <source>换手率:</source>
        <translation>Turnover:</translation>
    </message>
    <message>
        <source>金额:</source>
        <translation>Amount:</translation>
    </message>
    <message>
        <source>大盘涨跌幅:</source>
        <translation>Market %:</translation>
    </message>
</context>
<context>
    <name>TC::TradeTip</name>
    <message>
        <source>%1&#x3000;价格: </source>
        <translation>%1　Price: </translation>
    </message>
    <message>
        <source>非法值</source>
        <translation>Invalid</translation>
    </message>
    <message>
        <source>买入: </source>
        <translation>Bought: </translation>
    </message>
    <message>
        <source>卖出: </source>
        <translation>Sold: </translation>
    </message>
    <message>
        <source>委买: </source>
        <translation>Buy order: </translation>
    </message>
    <message>
        <source>委卖: </source>
        <translation>Sell order: </translation>
    </message>
</context>
<context>
    <name>TC::TransactionList</name>
    <message>
        <source>时间</source>
        <translation>Time</translation>
    </message>
    <message>
        <source>价格</source>
        <translation>Price</translation>
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
        <source>该时段没有成交明细</source>
        <translation>No deals in this period</translation>
    </message>
</context>
</TS>
