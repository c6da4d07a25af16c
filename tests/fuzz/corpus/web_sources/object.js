var a = { start : function (x, y) { if (x) { go(x, (y)); } } };
/* open
