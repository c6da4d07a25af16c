var Player = {
    state : 0,
    url : "",

    attach : function (pluginId) {
        video=document.getElementById(pluginId);
        video.SetDisplayArea(0, 0, 1280, 720);
    },

    play : function (url) {
        screen=document.getElementById("pluginPlayer");
        screen.Load(url);
        screen.Play(url);
        Player.url = url;
        Player.state = 1;
    },

    togglePause : function () {
        if (Player.state == 1) {
            this.video=$("pluginPlayer");
            this.video.Pause();
            Player.state = 2;
        } else {
            this.video.Resume();
            Player.state = 1;
        }
    }
};
