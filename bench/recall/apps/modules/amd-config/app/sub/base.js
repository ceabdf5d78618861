define([], () => function Base(src) { this.src = src; this.src.Attach9(); });   /* call: EPG.Attach9 */
