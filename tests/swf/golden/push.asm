# Every push type, values that are cut off, and constants that cannot be given.
doaction {
  Push const8 0, const16 1                  # no pool yet
  ConstantPool "zero" "" "two"
  Push "text", "", "tab\tand\x80"
  Push float 0.5, float -1e30, null, undefined, reg 0, reg 255, true, false, boolean 2
  Push 0.5, double -1, double 1e300, 5, int -1, const8 2, const8 1, const8 3, const16 0, const16 65535
  Push type 10, type 99, 1                  # unknown types: the next byte is the next type
  Push type 0 hex 6162                      # a string without its end
  Push type 1 hex 0000
  Push type 6 hex 000000
  Push type 7 hex ff
  Push type 9 hex 01
  Push type 4
  Push length 0
  Push float 0                              # the last value before GetProperty is a property
  GetProperty
  Push float 3, float 21
  GetProperty
  Push float 22
  GetProperty
  Push float -1
  GetProperty
  Push float 1.5
  GetProperty
  Push type 1 hex 0000c07f                  # not a number
  GetProperty
  Push type 1 hex caf24971                  # 1e30
  GetProperty
  Push float 3, 3
  GetProperty
  Push float 4
  Play
  GetProperty
  with { Push float 5 }                     # not directly before it in the same block
  GetProperty
}
end
