Vue.config.productionTip = false;

// $store_, $files and $fonts are there in every component.
var PluginAccess = {
  install: function (Vue, options) {
    Object.keys(options).forEach(function (name) {
      Vue.prototype["$" + name] = document.getElementById(options[name]);
    });
  }
};
Vue.use(PluginAccess, { store_: "store", files: "files", fonts: "fonts" });

var remembers = {
  data: function () { return { page: 1 }; },
  created: function () {
    this.$store_.GetItem("page");
    this.page = this.$store_.GetNumber("page", 1);      /* call: STORAGE.GetNumber */
  },
  beforeDestroy: function () {
    this.$store_.SetItem("page", this.page);
  }
};

Vue.component("book-row", {
  props: ["book"],
  template: "<p :class='{ on: book.open }' @click='$emit(\"read\", book)'>{{ book.title }} <small>{{ size }}</small>" +
    "<span @mouseover='$files.PeekFile(book.id)'>?</span></p>",      /* text: FILESTORE.PeekFile */
  computed: {
    size: function () {
      return this.$files.GetCompressedSize(this.book.id) + " kB";    /* call: FILESTORE.GetCompressedSize */
    }
  }
});

Vue.component("reader", {
  mixins: [remembers],
  props: { book: { type: Object, required: true } },
  data: function () { return { words: [], bookmarks: { AddMark: function (n) { this.last = n; } } }; },
  watch: {
    page: function (now, old) {
      this.bookmarks.AddMark(now);                      /* decoy */
      this.$store_.AddMark(this.book.id, now);          /* call: STORAGE.AddMark */
    }
  },
  mounted: function () {
    var vm = this;
    vm.$fonts.SetHinting("full");                       /* call: FONT.SetHinting */
    vm.$nextTick(function () {
      vm.$fonts.FitText(vm.$el.textContent, 600);       /* call: FONT.FitText */
      vm.page++;
    });
  },
  methods: {
    speak: function () {
      var self = this;
      ["Begin", "End"].forEach(function (part) {
        self.$store_[part + "Batch"]();                 /* call: STORAGE.BeginBatch, STORAGE.EndBatch */
      });
    }
  },
  render: function (h) {
    return h("article", { on: { click: this.speak } }, [this.book.title + ", page " + this.page]);
  }
});

var app = new Vue({
  el: "#app",
  data: {
    heading: "My library",
    books: [{ id: "b2", title: "Winter", open: false }, { id: "b1", title: "Autumn", open: false }],
    current: null,
    size: 20
  },
  computed: {
    sorted: function () {
      return this.books.slice().sort(function (a, b) { return a.title < b.title ? -1 : 1; });
    }
  },
  created: function () {
    window.addEventListener("keydown", this.key);
    this.$on("font", function (fonts) {
      fonts.SetFontScale(this.size / 20);               /* call: FONT.SetFontScale */
    });
    this.refresh();
  },
  methods: {
    refresh: function () {
      this.$files.ListFiles("/books");
      this.$files.WatchFolder("/books", function () {   /* call: FILESTORE.WatchFolder */
        app.heading = "My library (" + app.books.length + ")";
      });
    },
    read: function (book) {
      this.current = book;
      book.open = true;
      var Reader = Vue.extend(Vue.component("reader"));
      var reader = new Reader({ propsData: { book: book } }).$mount();
      this.$el.appendChild(reader.$el);
    },
    larger: function () {
      this.size += 2;
      this.$emit("font", this.$fonts);
    },
    key: function (e) {
      var i = e.keyCode - 49;
      if (this.books[i]) { this.read(this.books[i]); }
      if (e.keyCode === 403) { this.larger(); }
      if (e.keyCode === 404) { Vue.set(this, "heading", "store.WipeShelf()"); }     /* decoy */
    }
  }
});
