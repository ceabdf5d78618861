// What RxJS does, as far as objects flow through it: an observable has all its values at once. Nothing here is ever run.
var rxjs = (function () {
  function Observable(start) {
    var self = this;
    start({ next: function (value) { self.value = value; }, error: function () {}, complete: function () {} });
  }
  function made(value) {
    var observable = new Observable();
    observable.value = value;
    return observable;
  }
  function from(what) {
    var observable = new Observable();
    for (var one of what) observable.value = one;
    what.then(function (value) { observable.value = value; });
    observable.value = what.value;
    return observable;
  }
  function subscribe(next, error, complete) {
    next(this.value);
    next.next(this.value);
    complete();
    next.complete();
    return { unsubscribe: function () {}, add: function () {} };
  }
  Observable.prototype = {
    subscribe: subscribe, forEach: subscribe,
    pipe: function (a, b, c, d, e, f) {
      var one = a(this), two = b(one), three = c(two), four = d(three), five = e(four), six = f(five);
      return arguments.length > 5 ? six : arguments.length > 4 ? five : arguments.length > 3 ? four :
             arguments.length > 2 ? three : arguments.length > 1 ? two : one;
    },
    toPromise: function () { return Promise.resolve(this.value); }, asObservable: function () { return this; },
    next: function (value) { this.value = value; }, error: function () {}, complete: function () {}, unsubscribe: function () {},
    getValue: function () { return this.value; }
  };
  function Subject(value) { this.value = value; }
  Subject.prototype = Observable.prototype;
  function same() { return function (source) { return source; }; }
  function asked(f) { return function (source) { f(source.value); f.next(source.value); return source; }; }
  function mapped(f) { return function (source) { return made(f(source.value)); }; }
  function flat(f) { return function (source) { return from(f(source.value)); }; }
  function reduced(f, first) {
    return function (source) {
      var state = made(first);
      state.value = f(state.value, source.value);
      return state;
    };
  }
  function latest(a, b) {
    return function (source) { return made([source.value, a.value, b.value]); };
  }
  function both(list, other) { return made([list[0].value || list.value, list[1].value || other.value]); }
  function any(a, b, c) { var all = made(a.value); all.value = b.value; all.value = c.value; return all; }
  var operators = {
    map: mapped, tap: asked, do: asked, filter: asked, find: asked, takeWhile: asked, skipWhile: asked, first: asked, last: asked,
    switchMap: flat, mergeMap: flat, concatMap: flat, exhaustMap: flat, flatMap: flat, scan: reduced, reduce: reduced,
    take: same, skip: same, delay: same, debounceTime: same, throttleTime: same, auditTime: same, distinctUntilChanged: same,
    distinct: same, share: same, shareReplay: same, takeUntil: same, observeOn: same, subscribeOn: same, retry: same, repeat: same,
    finalize: function (f) { f(); return same(); }, catchError: function (f) { f(); return same(); },
    toArray: function () { return function (source) { return made([source.value]); }; },
    pluck: function (name) { return function (source) { return made(source.value[name]); }; },
    mapTo: function (value) { return function () { return made(value); }; },
    startWith: function (value) { return function (source) { return any(source, made(value)); }; },
    withLatestFrom: latest, combineLatestWith: latest, zipWith: latest,
    mergeAll: function () { return function (source) { return from(source.value); }; },
    switchAll: function () { return function (source) { return from(source.value); }; },
    pairwise: function () { return function (source) { return made([source.value, source.value]); }; },
    bufferCount: function () { return function (source) { return made([source.value]); }; }
  };
  return Object.assign({
    Observable: Observable, Subject: Subject, BehaviorSubject: Subject,
    ReplaySubject: function () { return new Subject(); }, AsyncSubject: function () { return new Subject(); },
    operators: operators, from: from, defer: function (f) { return from(f()); },
    of: function (a, b, c) { return any(made(a), made(b), made(c)); },
    timer: function () { return made(0); }, interval: function () { return made(0); },
    fromEvent: function (target, name) {
      var observable = new Observable();
      target.addEventListener(name, function (event) { observable.value = event; });
      return observable;
    },
    merge: any, concat: any, race: any, combineLatest: both, zip: both, forkJoin: both,
    firstValueFrom: function (o) { return Promise.resolve(o.value); }, lastValueFrom: function (o) { return Promise.resolve(o.value); }
  }, operators);
})();
