TV.ready.then(function (tv) {
    var grid = new Grid('#grid', tv),
        $details = $('#details'),
        chosen = null,
        actions;

    $.ajax({ url: 'data/schedule.json', dataType: 'json' }).then(function (channels) {
        grid.fill(channels);
        $.each(channels, function (i, channel) {
            tv.channel.SetFavoriteGroup(channel.id, 'all');        /* call: CHANNEL.SetFavoriteGroup */
        });
    });

    $('#grid').on({
        moved: function (e, id) {
            tv.epg.PrefetchDetails(id);                            /* call: EPG.PrefetchDetails */
        },
        chosen: function (e, id) {
            chosen = id;
            $details.removeClass('hidden').find('h2').text('Event ' + id);
        }
    });

    actions = {
        record: function () {
            tv.recorder.ScheduleRecording(chosen);
            tv.recorder.SetPadding(5, 10);                         /* call: RECORDER.SetPadding */
        },
        remind: function () {
            tv.calendar.AddEntry(chosen);
            tv.calendar.SetEntryColor(chosen, 'red');              /* call: CALENDAR.SetEntryColor */
        },
        series: function () {
            var recorder = $('object').filter('[data-plugin=recorder]').get(0);
            recorder.ScheduleSeries(chosen);                       /* call: RECORDER.ScheduleSeries */
            recorder.SetKeepUntil('space');                        /* call: RECORDER.SetKeepUntil */
        }
    };

    $details.on('click', 'a', function () {
        actions[this.className]();
        return false;
    });

    $(document).on('keydown', function (e) {
        var moves = { 37: [-1, 0], 39: [1, 0], 38: [0, -1], 40: [0, 1] };
        if (moves[e.which]) {
            grid.move.apply(grid, moves[e.which]);
        } else if (e.which === 13 && grid.current()) {
            tv.channel.SetChannel(grid.channels[grid.row].id);
            tv.channel.ShowChannelBanner(3000);                    /* call: CHANNEL.ShowChannelBanner */
        } else if (e.which === 405) {
            $.when(tv.epg.GetGenreList()).done(function (genres) {  /* call: EPG.GetGenreList */
                $details.find('p').text(String(genres));
            });
        }
    });

    // The log has a recorder of its own: it keeps key strokes.
    var log = { recorder: { keys: [], SetPadding: function (n) { this.keys.length = n; } } };
    log.recorder.SetPadding(0);                                    /* decoy */
});

$(TV.start);
