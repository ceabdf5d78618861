# Nested blocks: with and try in every form, sizes that lie, branches into and out of them.
doaction {
  with {
    with { Play }
    try { Stop } catch problem { Pop } finally { End }
  }
  try { with { Play } } finally { try { Stop } catch reg 9 { Pop } }
  try flags 0 size 1 { Play } catch ignored { Stop } finally { Pop }
  try flags 7 { Play }
  with size 0 { Play }
  with size 3 { Push "is cut by the block" }
  Stop
  with size 60000 {
    Play
    with size 60000 { Stop }
  }
}
doaction {
back:
  Push "x"
  If back
  Jump ahead
  with {
    Jump inside
    Play
inside:
    Stop
    If back
  }
ahead:
  Jump 30000
  Jump -32768
  If end
  raw 0x99 05
  raw 0x9D
end:
}
end
