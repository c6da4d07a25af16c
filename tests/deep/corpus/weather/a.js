var store = document.getElementById("storePlugin");
var net=document.getElementById("netPlugin");

function Cache(plugin) {
    this.plugin = plugin;
}

Cache.prototype.load = function (key) {
    return store.GetValue(key);
};

function save(target, key, value) {
    target.SetValue(key, value);
}
