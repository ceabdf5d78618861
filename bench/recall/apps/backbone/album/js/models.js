var Album = {};

Album.plugin = _.memoize(function (name) {
    return document.getElementById('plugin-' + name);
});

Album.Photo = Backbone.Model.extend({
    defaults: { title: '', file: '', stars: 0, turned: 0 },

    initialize: function () {
        this.on('change:turned', function (model, turned) {
            Album.plugin('files').WriteMetadata(model.get('file'), 'orientation', turned);      /* call: FILESTORE.WriteMetadata */
        });
    },

    turn: function () {
        this.set('turned', (this.get('turned') + 90) % 360);
    },

    // There is no server: models are kept in the set.
    sync: function (method, model, options) {
        var files = Album.plugin('files');
        switch (method) {
        case 'create':
        case 'update':
            files.WriteFile(model.get('file') + '.json', JSON.stringify(model));
            files.SetFileTag(model.get('file'), 'album');                                       /* call: FILESTORE.SetFileTag */
            break;
        case 'delete':
            files.ShredFile(model.get('file'));                                                 /* call: FILESTORE.ShredFile */
            break;
        }
        options.success({ id: model.id || model.cid });
    }
});

Album.Photos = Backbone.Collection.extend({
    model: Album.Photo,
    comparator: 'title',
    best: function () {
        return this.filter(function (p) { return p.get('stars') > 3; });
    },
    WriteMetadata: function () { return this.pluck('title'); }
});
