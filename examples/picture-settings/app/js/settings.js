var Settings = {
    modes : ["Standard", "Movie", "Dynamic"],
    mode : 0,
    brightness : 50
};

Settings.onLoad = function () {
    picture=document.getElementById("pluginPicture");
    Settings.mode = picture.GetPictureMode();
    Settings.brightness = picture.GetBrightness();

    kob=document.getElementById("pluginKob");
    kob.Init();
    kob.Execute("Start");
    Settings.show();
};

Settings.show = function () {
    document.getElementById("mode").innerHTML = "Picture mode: " + Settings.modes[Settings.mode];
    document.getElementById("brightness").innerHTML = "Brightness: " + Settings.brightness;
};

Settings.apply = function (mode, brightness) {
    picture=document.getElementById("pluginPicture");
    picture.SetPictureMode(mode);
    picture.SetBrightness(brightness);
};

Settings.reset = function () {
    kob=document.getElementById("pluginKob");
    kob.Execute("Start");
    kob.Execute("ResetPanelCalibration");
    Settings.apply(0, 50);
};
