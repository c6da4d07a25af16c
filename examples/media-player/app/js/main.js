var Main = {
    trailers : ["trailers/week1.mp4", "trailers/week2.mp4"]
};

Main.onLoad = function () {
    Player.attach("pluginPlayer");
    Volume.init();
    document.getElementById("title").innerHTML = "This week";
    Player.play(Main.trailers[0]);
};
