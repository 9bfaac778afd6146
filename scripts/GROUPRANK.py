# type: 0
# parameter group: "SH600000,SH601318,SH600519,SZ000001,SZ000858,SZ300750"
#
# 组内强度: walks the instruments of the group and compares the instrument of the chart with them, minute by minute:
# its return since the first minute, the average return of the group, and the share of the group that it is ahead of.
# Source: the percentile rank, (members below + half of the equal ones) / members, as in Hyndman and Fan, Sample
# Quantiles in Statistical Packages, The American Statistician 50 (1996).

import timeshare_model as model


def returns(bars, times):
    """Return since the first minute, in percent, at each of the times; a minute without a bar repeats the last one,
    and 0 stands before the first one."""
    start = bars.open[0] if len(bars) and bars.open[0] > 0 else bars.price[0] if len(bars) else 0.0
    values, index, last = [], 0, 0.0
    for time in times:
        while index < len(bars) and bars.time[index] <= time:
            last = (bars.price[index] / start - 1.0) * 100.0 if start > 0 else 0.0
            index += 1
        values.append(last)
    return values


def rank(own, others):
    """Percentile rank of a value among others, 0 to 100."""
    below = sum(1 for other in others if other < own)
    equal = sum(1 for other in others if other == own)
    return 100.0 * (below + 0.5 * equal) / len(others)


def main():
    day = model.read()
    if not day.group:
        model.fail("参数 group 中没有可用的合约")
    own = returns(day, day.time)
    members = []
    for done, bars in enumerate(day.group):
        model.progress(done, len(day.group), bars.instrument)
        members.append(returns(bars, day.time))
    model.progress(len(day.group), len(day.group), "")
    columns = list(zip(*members))
    model.line("本合约", own)
    model.line("组平均", [sum(column) / len(column) for column in columns])
    model.line("排名", [rank(value, column) for value, column in zip(own, columns)], axis="own", style=4)


if __name__ == "__main__":
    main()
