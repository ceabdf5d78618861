# Sprites whose ids are read as the header of a tag: 65 is one of code 1 and one byte, 66 of two bytes, 70 of six.
sprite 66 1 {
  doaction { Stop }
  showframe
  doaction long { Play }
  end
}
sprite 65 1 {
  doaction { Stop }
  end
}
sprite 70 1 {
  doaction { Stop }
  doaction { Play }
  end
}
doaction { Pop }
end
