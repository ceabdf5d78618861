(function ($) {
    "use strict";

    var PIXELS = 6;

    window.Grid = function (container, tv) {
        this.container = $(container);
        this.tv = tv;
        this.row = 0;
        this.column = 0;
        this.channels = [];
        this.container.on('click', '.cell', $.proxy(this.onClick, this));
    };

    $.extend(Grid.prototype, {
        fill: function (channels) {
            this.channels = channels;
            var html = $.map(channels, function (c) {
                var cells = $.map(c.events, function (e) {
                    return '<div class="cell" data-id="' + e.id + '" style="width:' + e.length * PIXELS + 'px">' +
                        e.title + '</div>';
                });
                return '<div class="row" data-channel="' + c.id + '"><b>' + c.name + '</b>' + cells.join('') + '</div>';
            });
            this.container.html(html.join(''));
            this.tv.epg.MarkVisibleRange(0, 180);     /* call: EPG.MarkVisibleRange */
            this.focus();
        },

        focus: function () {
            var $cell = this.container.find('.row').eq(this.row).find('.cell').eq(this.column);
            this.container.find('.focus').removeClass('focus');
            $cell.addClass('focus');
            return $cell;
        },

        move: function (dx, dy) {
            this.row = Math.max(0, Math.min(this.channels.length - 1, this.row + dy));
            var events = (this.channels[this.row] || { events: [] }).events;
            this.column = Math.max(0, Math.min(events.length - 1, this.column + dx));
            this.container.trigger('moved', [this.focus().data('id')]);
        },

        current: function () {
            var c = this.channels[this.row];
            return c && c.events[this.column];
        },

        onClick: function (e) {
            var $cell = $(e.currentTarget);
            var id = $cell.data('id');
            this.tv.epg.GetEventDetails(id);
            this.tv.epg.GetEventPoster(id, $.proxy(this.onPoster, this));   /* call: EPG.GetEventPoster */
            this.container.trigger('chosen', [id]);
        },

        onPoster: function (path) {
            this.container.css('background-image', 'url(' + path + ')');
            this.tv.epg.ReleasePoster(path);          /* call: EPG.ReleasePoster */
        }
    });
})(jQuery);
