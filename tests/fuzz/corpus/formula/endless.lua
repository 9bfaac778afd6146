formula { name = "E", lines = {{"A"}} }
local s = ("x"):upper()
function run() while true do s = s .. s end end
