var Main = {
    channel : 0
};

Main.onLoad = function () {
    appControl=document.getElementById("pluginAppControl");
    appControl.AddKeyListener(Keys.CH_UP);
    appControl.AddKeyListener(Keys.CH_DOWN);

    tuner=document.getElementById("pluginTuner");
    Main.channel = tuner.GetCurrentSource();

    Guide.init();
    document.getElementById("anchor").focus();
};

Main.onUnload = function () {
    appControl.RemoveAllKeyListeners();
};

Main.keyDown = function () {
    var key = event.keyCode;
    switch (key) {
    case Keys.UP:
        Guide.move(-1);
        break;
    case Keys.DOWN:
        Guide.move(1);
        break;
    case Keys.CH_UP:
        Main.channel = Main.channel + 1;
        tuner.Tune(Main.channel);
        Guide.load(0);
        break;
    case Keys.RETURN:
        appControl.Exit();
        break;
    }
};
