# A sprite whose id is below 64: its id ends the nested walk, its frame count is the next tag.
doaction { Play }
sprite 5 1 {
  doaction { Stop }
  end
}
doaction { Pop }
end
