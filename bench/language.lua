-- The algorithms of bench/language_bench.cc in Lua: prints "NAME MILLISECONDS" for each, the median
-- of ROUNDS runs by the clock of the processor.
local ROUNDS = 9

local measures = {}

measures.language_loop = function()
  x = 0
  for i = 1, 1000000 do x = x + 1 end
end

function fib(n)
  if n < 2 then return n end
  return fib(n - 1) + fib(n - 2)
end
measures.language_fib_24 = function() x = fib(24) end

measures.language_array = function()
  a = {}
  for i = 1, 1000000 do a[i] = i end
  s = 0
  for i = 1, 1000000 do s = s + a[i] end
end

measures.language_nested_loops = function()
  n = 0
  for i = 1, 1000 do
    for j = 1, 1000 do n = n + j end
  end
end

local C = {}
C.__index = C
function C:add(k) self.n = self.n + k end
measures.language_methods = function()
  o = setmetatable({n = 0}, C)
  for i = 1, 300000 do o:add(i) end
end

measures.language_dictionary = function()
  d = {}
  for i = 1, 200000 do d["k" .. i] = i end
  n = 0
  for i = 1, 200000 do n = n + d["k" .. i] end
end

measures.language_dictionary_numbers = function()
  d = {}
  for i = 1, 200000 do d[i] = i end
  n = 0
  for i = 1, 200000 do n = n + d[i] end
end

for name, measure in pairs(measures) do
  local times = {}
  for round = 1, ROUNDS do
    collectgarbage()
    local start = os.clock()
    measure()
    times[round] = (os.clock() - start) * 1000
  end
  table.sort(times)
  print(name, times[(ROUNDS + 1) // 2])
end
