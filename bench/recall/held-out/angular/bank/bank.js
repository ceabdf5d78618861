(function (angular) {
  "use strict";
  var bank = angular.module("bank", []);

  function element(id) { return angular.element(document.getElementById(id))[0]; }

  bank.constant("ENDPOINT", "https://bank.example/api/");
  bank.value("limits", { transfer: 500, SetVault: function (n) { this.vault = n; } });

  bank.factory("sec", function () { return element("sec"); });
  bank.factory("cry", ["$document", function ($document) { return $document[0].getElementById("cry"); }]);

  bank.service("vault", ["sec", "cry", "$q", "$timeout", function (sec, cry, $q, $timeout) {
    this.open = function (pin) {
      sec.Open();
      if (!sec.CheckPin(pin)) { return $q.reject("pin"); }
      sec.SetVault("bank");                             /* call: SECURITY.SetVault */
      return $q.when({ keys: cry });
    };
    this.sign = function (transfer) {
      var deferred = $q.defer();
      $timeout(function () {
        cry.Sign(angular.toJson(transfer));
        cry.SignDetached(angular.toJson(transfer), deferred.resolve);     /* call: CRYPTO.SignDetached */
      }, 5);
      return deferred.promise;
    };
    this.lock = function () {
      sec.SealVault();                                  /* call: SECURITY.SealVault */
      sec.Close();
    };
  }]);

  bank.provider("session", function () {
    var minutes = 5;
    this.minutes = function (m) { minutes = m; };
    this.$get = ["sec", function (sec) {
      sec.SetSessionTimeout(minutes * 60);              /* call: SECURITY.SetSessionTimeout */
      return { touch: function () { sec.ExtendSession(); } };     /* call: SECURITY.ExtendSession */
    }];
  });
  bank.config(["sessionProvider", function (p) { p.minutes(3); }]);

  bank.filter("money", function () {
    return function (cents) { return (cents / 100).toFixed(2) + " EUR"; };
  });

  bank.directive("pinPad", function () {
    return {
      restrict: "E",
      scope: { onDone: "&" },
      template: "<div ng-click='show()' title='kbd.Shuffle()'>PIN</div>",     /* decoy */
      link: function (scope) {
        var kbd = element("kbd");
        scope.show = function () {
          kbd.SetLayout("numeric");
          kbd.MaskInput("*");                           /* call: KEYBOARD.MaskInput */
          kbd.Show();
          scope.onDone({ digits: kbd.ReadSecure(4) });  /* call: KEYBOARD.ReadSecure */
        };
      }
    };
  });

  bank.controller("AccountsCtrl", ["$scope", "$http", "vault", "session", "limits", "sec", "ENDPOINT", AccountsCtrl]);

  function AccountsCtrl($scope, $http, vault, session, limits, sec, ENDPOINT) {
    var vm = this;
    vm.title = "Accounts";
    vm.sec = sec;
    vm.index = 0;
    vm.accounts = [{ name: "Current", balance: 123456 }, { name: "Savings", balance: 5000000 }];

    $scope.$watch(function () { return vm.index; }, function (i) {
      sec.AuditAccess(vm.accounts[i].name);             /* call: SECURITY.AuditAccess */
      limits.SetVault(i);                               /* decoy */
    });
    $scope.$on("locked", function (event, plugin) {
      plugin.WipeClipboard();                           /* call: SECURITY.WipeClipboard */
    });

    $http.get(ENDPOINT + "accounts").then(function (answer) {
      vm.accounts = answer.data;
    }, function () {
      vm.title = "Accounts (no connection)";
    });

    vm.unlock = function (digits) {
      vault.open(digits).then(function (opened) {
        opened.keys.LoadKeyStore("bank");               /* call: CRYPTO.LoadKeyStore */
        return vault.sign({ amount: limits.transfer });
      }).then(function (signature) {
        vm.title = "Signed " + signature;
      });
    };

    vm.key = function (event) {
      session.touch();
      switch (event.keyCode) {
        case 38: vm.index = 0; break;
        case 40: vm.index = 1; break;
        case 403: vault.lock(); $scope.$broadcast("locked", sec); break;
        case 404: $http.get(ENDPOINT + "advice").then(function (a) { sec[a.data.method](a.data.value); }, angular.noop); break;      /* undecidable: SECURITY */
        case 405: vm.title = "sec.PanicLock() is not for you"; break;     /* decoy */
      }
    };
  }
}(window.angular));
