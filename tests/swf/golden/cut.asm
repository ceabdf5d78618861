# The file ends inside a record of its only script.
doaction {
  Play
  Push "this string is cut off by the end of the file"
}
cut 30
