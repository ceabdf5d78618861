$(function () {

    var PhotoView = Backbone.View.extend({
        tagName: 'li',
        template: _.template('<b><%- title %></b> <i class="star"><%= stars %></i> <i class="turn">turn</i> <i class="gone">x</i>'),
        events: {
            'click b': 'show',
            'click .star': 'star',
            'click .turn': 'turn',
            'click .gone': 'gone'
        },
        initialize: function () {
            this.listenTo(this.model, 'change', this.render);
            this.listenTo(this.model, 'destroy', this.remove);
            this.viewer = Album.plugin('viewer');
        },
        render: function () {
            this.$el.html(this.template(this.model.attributes));
            return this;
        },
        show: function () {
            this.viewer.ShowImage(this.model.get('file'));
            this.viewer.SetCaption(this.model.get('title'));                    /* call: IMAGEVIEWER.SetCaption */
        },
        star: function () {
            this.model.save('stars', this.model.get('stars') + 1);
            this.viewer.DrawStars(this.model.get('stars'));                     /* call: IMAGEVIEWER.DrawStars */
        },
        turn: function () {
            this.model.turn();
        },
        gone: function () {
            if (this.model.collection.length > 1) {
                this.model.destroy();
            }
        }
    });

    var AppView = Backbone.View.extend({
        el: '#app',
        events: {
            'click .share': 'share',
            'click .print': 'print',
            'click .burn': 'burn'
        },
        initialize: function (options) {
            _.bindAll(this, 'add', 'key');
            this.net = options.net;
            this.collection.on('add', this.add).on('reset', this.reset, this);
            $(document).on('keydown', this.key);
        },
        add: function (photo) {
            this.$('.photos').append(new PhotoView({ model: photo }).render().el);
        },
        reset: function (photos) {
            photos.each(this.add);
            Album.plugin('viewer').SetAlbumSize(photos.length);                 /* call: IMAGEVIEWER.SetAlbumSize */
        },
        share: function () {
            var net = this.net;
            this.collection.each(function (photo) {
                net.ShareOverDlna(photo.get('file'));                           /* call: NETWORK.ShareOverDlna */
            });
        },
        print: function () {
            this.net.FindPrinter(_.bind(function () {                           /* call: NETWORK.FindPrinter */
                this.net.SpoolJob(this.collection.first().get('file'));         /* call: NETWORK.SpoolJob */
            }, this));
        },
        burn: function () {
            this.collection.WriteMetadata();                                    /* decoy */
            _(this.collection.best()).invoke('save');
            _.result(this, 'options');
            Album.plugin('files').EjectVolume('usb0');                          /* call: FILESTORE.EjectVolume */
        },
        key: function (e) {
            var action = { 403: 'share', 404: 'print', 405: 'burn' }[e.which];
            if (action) {
                this[action]();
            } else if (e.which === 406 && this.collection.length > 1) {
                this.collection.last().destroy();
            } else if (e.which === 13) {
                this.collection.at(0).turn();
            }
        }
    });

    var photos = new Album.Photos();
    var app = new AppView({ collection: photos, net: Album.plugin('net') });
    photos.reset([{ title: 'Beach', file: 'a.jpg' }, { title: 'Hill', file: 'b.jpg' }, { title: 'Night', file: 'c.jpg', stars: 4 }]);
    photos.add({ title: 'Dog', file: 'd.jpg' });

    Backbone.Events.on && app.listenTo(photos, 'change:stars', function (photo, stars) {
        if (stars > 4) {
            Album.plugin('viewer').PlayFireworks();                             /* call: IMAGEVIEWER.PlayFireworks */
        }
    });
});
