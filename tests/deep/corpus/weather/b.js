var Keys = {
    handle: function (event) {
        if (!net.IsConnected()) {
            return;
        }
        save(store, "last", event.keyCode);
        var text = "store.Clear()";
        /*
         * store.Flush();
         */
        save(store, "time", net.GetIpAddress());
    }
};
